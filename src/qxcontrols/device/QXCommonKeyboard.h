// QXCommonKeyboard: the control for the keyboard's output delay, the only setting that belongs to
// no reader and no key.
//
// The delay is one byte at the base of MODULE_MAGNET_CONFIG; it is requested with module id 0, as
// the device requires.
#pragma once

#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/device/ModuleControl.h"

namespace qx {

class QXCommonKeyboard : public ModuleControl {
public:
    explicit QXCommonKeyboard(const Platform& platform = {});

    // Text of the label beside the slider.
    [[nodiscard]] const std::string& CaptionOutputDelay() const { return lblOutputDelay.Caption; }
    void SetCaptionOutputDelay(std::string sCaption);

    // The output delay, 0 to 255, in the keyboard's own unit.
    [[nodiscard]] Byte OutputDelay() const { return m_outputDelay; }
    void SetOutputDelay(Byte bDelay);

    [[nodiscard]] Long TransferSize(bool LoadInKeyboard) const override;
    void DefaultValues() override;
    void PrepareDataUpload(bool LoadInKeyboard) override;
    void PrepareDataDownload(bool LoadInKeyboard) override;
    void DataUpload(bool LoadInKeyboard) override;
    void DataDownload(bool LoadInKeyboard) override;

    Label lblOutputDelay;
    Label lblCurrOutputDelay; // the slider's value
    Slider slidOutputDelay;

    // The user has moved the slider; a value outside its range is limited to it.
    void slidOutputDelay_Change();

private:
    void QueueBlock();

    Byte m_outputDelay = 0;
};

} // namespace qx
