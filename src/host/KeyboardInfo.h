// KeyboardInfo: the keyboard that a document was read from.
#pragma once

#include "host/FieldVisitor.h"
#include "host/Json.h"

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

    // The keyboard in the note of a valid document, which may be null: only its texts.
    [[nodiscard]] static KeyboardInfo In(const Json* note);

    void Visit(FieldVisitor& fields);

    struct Text {
        Field field;
        std::string KeyboardInfo::*text;
    };
    static const std::array<Text, 5> kTexts; // as documents name them
};

} // namespace qx::host
