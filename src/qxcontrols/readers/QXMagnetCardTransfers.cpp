// The transfers of QXMagnetCard: the stretches it requests, and how it reads and writes them.
#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/readers/QXMagnetCard.h"

namespace qx {

Long QXMagnetCard::TransferSize(bool /*LoadInKeyboard*/) const {
    TraceNamed(".TransferSize");
    return kMagneticHeadersSize + kMagneticSwitchesSize;
}

void QXMagnetCard::PrepareDataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".PrepareDataUpload");
    QueueBlocks();
}

void QXMagnetCard::PrepareDataDownload(bool /*LoadInKeyboard*/) {
    TraceNamed(".PrepareDataDownload");
    QueueBlocks();
}

void QXMagnetCard::QueueBlocks() {
    const Long headers = BaseAddress(MODULE_MAGNET_HEADERS);
    const Long config = BaseAddress(MODULE_MAGNET_CONFIG);
    if (headers == -1 || config == -1) {
        Services().messageBoxes->Show("PrepareDataUpload Failed"); // the same text for a download
        return;
    }
    Keyboard()->MemRequestAdd(MODULE_MAGNET_HEADERS, headers, kMagneticHeadersSize);
    Keyboard()->MemRequestAdd(MODULE_MAGNET_CONFIG, config + kMagneticSwitchesOffset,
                              kMagneticSwitchesSize);
}

// If the keyboard does not have the module, the driver refuses the address.
std::optional<std::string> QXMagnetCard::ReadBlock(Long lAddress, Long lSize) {
    std::string block;
    if (Keyboard() != nullptr && Keyboard()->ReadFromMemory(block, lAddress, lSize))
        return block;
    TraceNamed(".DataUpload failed at " + Hex(lAddress));
    return {};
}

void QXMagnetCard::DataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".DataUpload");
    const Long headersBase = BaseAddress(MODULE_MAGNET_HEADERS);
    const Long configBase = BaseAddress(MODULE_MAGNET_CONFIG);

    const auto headers = ReadBlock(headersBase, kMagneticHeadersSize);
    if (!headers)
        return;
    TraceNamed(".DataUpload ok     at " + Hex(headersBase));
    DecodeTrackSlots(*headers, m_settings.tracks);

    const auto switches = ReadBlock(configBase + kMagneticSwitchesOffset, kMagneticSwitchesSize);
    if (!switches)
        return;
    DecodeMagneticSwitches(*switches, m_settings);
    AdjustControls();
}

void QXMagnetCard::DataDownload(bool /*LoadInKeyboard*/) {
    Trace("QXMagnetcard.DataDownload");
    const Long headersBase = BaseAddress(MODULE_MAGNET_HEADERS);
    const Long configBase = BaseAddress(MODULE_MAGNET_CONFIG);
    if (headersBase == -1 || configBase == -1) {
        Services().messageBoxes->Show("DataDownload Failed");
        return;
    }

    Guarded(".DataDownload",
            [&] { WriteBlocks(headersBase, configBase + kMagneticSwitchesOffset); });
}

void QXMagnetCard::WriteBlocks(Long lHeadersAddress, Long lSwitchesAddress) {
    const std::string headers = EncodeTrackSlots(m_settings.tracks);
    if (Keyboard()->WriteIntoMemory(headers, lHeadersAddress, kMagneticHeadersSize))
        Trace("Length of block = " + std::to_string(headers.size()));
    else
        Trace("QXMagnetcard / Written headers failed at " + Hex(lHeadersAddress));

    const std::string switches = EncodeMagneticSwitches(m_settings);
    TraceBytes("Mag-Options ", switches);
    if (!Keyboard()->WriteIntoMemory(switches, lSwitchesAddress, kMagneticSwitchesSize))
        Trace("QXMagnetCard / Config Write error");
}

} // namespace qx
