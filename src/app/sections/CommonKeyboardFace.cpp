#include "app/SettingWords.h"
#include "app/sections/Entries.h"
#include "qxcontrols/device/QXCommonKeyboard.h"
#include "views/QXCommonKeyboardView.h"

namespace qx::app {

namespace {

constexpr SettingWord kWords[] = {
    {"outputDelay", QT_TRANSLATE_NOOP("SettingWords", "Output delay")},
};

class CommonKeyboardFace : public FaceOf<QXCommonKeyboard> {
    Q_DECLARE_TR_FUNCTIONS(CommonKeyboardFace)
public:
    using FaceOf::FaceOf;

    void Translate() override {
        Control().SetCaptionOutputDelay(WordOf(kCommonKeyboard, "outputDelay").toStdString() + ':');
    }
    [[nodiscard]] QWidget* MakeView() override {
        return new views::QXCommonKeyboardView(Control());
    }
    [[nodiscard]] QString Summary() override {
        return tr("Output delay: %1").arg(Control().OutputDelay());
    }
};

} // namespace

constinit const SectionEntry kCommonKeyboard = {"commonKeyboard",
                                                PageGroup::Device,
                                                QT_TRANSLATE_NOOP("SettingWords", "Keyboard"),
                                                "common",
                                                kWords,
                                                MakeFace<CommonKeyboardFace, QXCommonKeyboard>};

} // namespace qx::app
