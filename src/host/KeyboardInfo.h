// KeyboardInfo: the keyboard that a document was read from.
#pragma once

#include "host/FieldVisitor.h"

#include <array>
#include <string>

namespace qx {
class QXKeyboardAccess;
}

namespace qx::host {

struct KeyboardInfo {
    std::string name, bootloader, program, country, config;
    bool freeProgrammableKeys = false;
    bool connectionV24 = false;
    bool chipcardReader = false;
    bool barcodeReader = false;
    std::array<bool, 4> magneticTracks{};

    // The information that the keyboard access has read in its Init.
    [[nodiscard]] static KeyboardInfo Of(const QXKeyboardAccess& keyboard);

    void Visit(FieldVisitor& fields);
};

} // namespace qx::host
