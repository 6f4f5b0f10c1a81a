#include "qxcontrols/device/QXCommonKeyboard.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/device/QXKeyboardAccess.h"

#include <algorithm>

namespace qx {

namespace {

constexpr Byte kDefaultOutputDelay = 6;

} // namespace

QXCommonKeyboard::QXCommonKeyboard(const Platform& platform)
    : ModuleControl("QXCommonKeyboard", MODULE_KEYBOARD, platform) {
    slidOutputDelay.Max = 255;
    SetOutputDelay(kDefaultOutputDelay);
}

void QXCommonKeyboard::SetCaptionOutputDelay(std::string sCaption) {
    lblOutputDelay.Caption = std::move(sCaption);
    Refreshed.Raise();
}

void QXCommonKeyboard::SetOutputDelay(Byte bDelay) {
    m_outputDelay = bDelay;
    slidOutputDelay.Value = bDelay;
    lblCurrOutputDelay.Caption = std::to_string(bDelay);
    Refreshed.Raise();
}

Long QXCommonKeyboard::TransferSize(bool /*LoadInKeyboard*/) const {
    TraceNamed(".TransferSize");
    return kOutputDelaySize;
}

void QXCommonKeyboard::DefaultValues() {
    TraceNamed(".DefaultValues");
    SetOutputDelay(kDefaultOutputDelay);
}

void QXCommonKeyboard::PrepareDataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".PrepareDataUpload");
    QueueBlock();
}

void QXCommonKeyboard::PrepareDataDownload(bool /*LoadInKeyboard*/) {
    TraceNamed(".PrepareDataDownload");
    QueueBlock();
}

void QXCommonKeyboard::QueueBlock() {
    const Long base = BaseAddress(MODULE_MAGNET_CONFIG);
    if (base != -1)
        Keyboard()->MemRequestAdd(MODULE_KEYBOARD, base, kOutputDelaySize);
}

void QXCommonKeyboard::DataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".DataUpload");
    const Long base = BaseAddress(MODULE_MAGNET_CONFIG);
    if (base == -1)
        return;
    std::string data;
    if (Keyboard()->ReadFromMemory(data, base, kOutputDelaySize))
        SetOutputDelay(static_cast<Byte>(data[0]));
    else
        TraceNamed(".DataUpload failed at " + Hex(base));
}

void QXCommonKeyboard::DataDownload(bool /*LoadInKeyboard*/) {
    TraceNamed(".DataDownload");
    const Long base = BaseAddress(MODULE_MAGNET_CONFIG);
    if (base != -1 && !Keyboard()->WriteByteMemory(m_outputDelay, base))
        TraceNamed(".DataDownload failed at " + Hex(base));
}

void QXCommonKeyboard::slidOutputDelay_Change() {
    SetDataChanged(true);
    SetOutputDelay(static_cast<Byte>(
        std::clamp(slidOutputDelay.Value, slidOutputDelay.Min, slidOutputDelay.Max)));
}

} // namespace qx
