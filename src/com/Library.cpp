#include "com/Library.h"

#include "qxcontrols/device/ConfigDirEntry.h"
#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXSequencer.h"
#include "qxcontrols/pos/QXPOSProgrammer.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/pos/QXPosCodePage.h"
#include "qxcontrols/readers/BarcodePage.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"
#include "qxcontrols/settings/QXProgSettings.h"

#include <array>

namespace qx::com {
namespace {

template <typename... T>
std::span<const Class* const> TablesOf() {
    static const std::array<const Class*, sizeof...(T)> tables{&TableOf<T>()...};
    return tables;
}

template <typename... T>
std::span<const Enumeration* const> EnumerationsOf() {
    static const std::array<const Enumeration*, sizeof...(T)> tables{&EnumerationOf<T>()...};
    return tables;
}

} // namespace

std::span<const Class* const> Classes() {
    return TablesOf<QXKeyboardAccess, ConfigDirEntry, QXCommonKeyboard, KeySequence,
                    KeyboardSequences, QXKeyboardLayoutData, QXLayoutDisplay, QXSequencer,
                    QXProgSettings, BarcodeOptionPage, OptionBool, ButtonCaption, QXBarcode,
                    MagneticOptions, MagneticTrack, MagneticCaptions, QXMagnetCard, QXFreeProgKeys,
                    FuncKeyLayer, QXLayeredFuncKeys, POSBlock, POSKeyboard, POSCodeMapping,
                    PosCodePage, QXPosCodePage, QXPos, QXPosDisplay, QXPOSProgrammer>();
}

std::span<const Enumeration* const> Enumerations() {
    return EnumerationsOf<KeyboardModuleIDs, BarcodePage, KEY_SUPPORT, COLOR_SET, DisplayType>();
}

} // namespace qx::com
