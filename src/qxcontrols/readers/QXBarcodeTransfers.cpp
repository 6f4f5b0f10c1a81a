// The transfers of QXBarcode: the stretches it requests, and how it reads and writes them.
#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/readers/QXBarcode.h"

namespace qx {

namespace {

constexpr std::string_view kInvalidAddresses = "INVALID ADDRESSES FOR BARCODE-CONFIG";

// Traces the configuration block, and separately its unused stretches.
void TraceConfig(std::string_view block) {
    Trace("AnalyseBarcodeOptions, Len = " + std::to_string(block.size()));
    TraceBytes("HEX = ", block);
    TraceBytes("DUMMY = ", std::string(block.substr(4, 4)).append(block.substr(20, 4)));
    TraceBytes("VOTING ", block.substr(30, 6));
    TraceBytes("LASER ", block.substr(36, 5));
}

} // namespace

Long QXBarcode::TransferSize(bool /*LoadInKeyboard*/) const {
    TraceNamed(".TransferSize");
    return kBarcodeHeadersSize + kBarcodeConfigSize;
}

void QXBarcode::PrepareDataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".PrepareDataUpload");
    QueueBlocks();
}

void QXBarcode::PrepareDataDownload(bool /*LoadInKeyboard*/) {
    TraceNamed(".PrepareDataDownload");
    QueueBlocks();
}

void QXBarcode::QueueBlocks() {
    const Long headers = BaseAddress(MODULE_BARCODE_HEADERS);
    const Long config = BaseAddress(MODULE_BARCODE_CONFIG);
    if (headers == -1 || config == -1) {
        Services().messageBoxes->Show(kInvalidAddresses);
        return;
    }
    Keyboard()->MemRequestAdd(MODULE_BARCODE_HEADERS, headers, kBarcodeHeadersSize);
    Keyboard()->MemRequestAdd(MODULE_BARCODE_CONFIG, config, kBarcodeConfigSize);
}

void QXBarcode::DataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".DataUpload");
    const Long headersBase = BaseAddress(MODULE_BARCODE_HEADERS);
    const Long configBase = BaseAddress(MODULE_BARCODE_CONFIG);
    if (headersBase == -1 || configBase == -1)
        return;

    std::string block;
    if (!Keyboard()->ReadFromMemory(block, headersBase, kBarcodeHeadersSize)) {
        TraceNamed(".DataUpload / HEADERS failed at " + Hex(headersBase));
        return;
    }
    TraceNamed(".DataUpload / HEADERS ok     at " + Hex(headersBase));
    DecodeTrackSlots(block, m_settings.readers);
    if (Keyboard()->ReadFromMemory(block, configBase, kBarcodeConfigSize)) {
        TraceConfig(block);
        DecodeBarcodeConfig(block, m_settings);
    } else {
        TraceNamed(".DataUpload failed at " + Hex(configBase));
    }
    ShowPage(m_page);
    Refreshed.Raise();
}

void QXBarcode::DataDownload(bool /*LoadInKeyboard*/) {
    TraceNamed(".DataDownload");
    const Long headersBase = BaseAddress(MODULE_BARCODE_HEADERS);
    const Long configBase = BaseAddress(MODULE_BARCODE_CONFIG);
    if (headersBase == -1 || configBase == -1) {
        Services().messageBoxes->Show(kInvalidAddresses);
        return;
    }

    Guarded(".DataDownload", [&] {
        if (WriteHeaders(headersBase))
            WriteConfig(configBase);
    });
}

bool QXBarcode::WriteHeaders(Long lAddress) {
    const std::string headers = EncodeTrackSlots(m_settings.readers);
    const bool isWritten = Keyboard()->WriteIntoMemory(headers, lAddress, kBarcodeHeadersSize);
    Trace("BLOCK SIZE = " + std::to_string(headers.size()));
    TraceBytes("BYTES  = ", headers);
    TraceNamed((isWritten ? ".DataDownload ok     at " : ".DataDownload failed at ") +
               Hex(lAddress));
    return isWritten;
}

void QXBarcode::WriteConfig(Long lAddress) {
    std::string config;
    const bool isWritten = EncodeBarcodeConfig(m_settings, [&](Byte byte) {
        const Long address = lAddress + static_cast<Long>(config.size());
        if (!Keyboard()->WriteByteMemory(byte, address)) {
            TraceNamed(".DataDownload failed at " + Hex(address));
            return false;
        }
        config += static_cast<char>(byte);
        return true;
    });
    TraceBytes("OUTHEX = ", config);
    Trace("OUTLEN = " + std::to_string(config.size()));
    if (isWritten)
        TraceNamed(".DataDownload ok     at " + Hex(lAddress));
}

} // namespace qx
