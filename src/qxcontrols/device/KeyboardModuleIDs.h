// The modules that a keyboard can have.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string_view>

namespace qx {

// The device's own ids; 12 is unused.
enum KeyboardModuleIDs : Long {
    MODULE_NONE = 0,
    MODULE_KEYBOARD = 0, // the keyboard itself; indistinguishable from "no module"
    MODULE_BARCODE_CONFIG = 2,
    MODULE_BARCODE_HEADERS = 3,
    MODULE_MAGNET_CONFIG = 1,
    MODULE_MAGNET_HEADERS = 4,
    MODULE_FREEPROGRAMMABLE_KEYS = 5,
    MODULE_POS = 6,
    MODULE_FUNCKEYS_X1_4610 = 7,
    MODULE_FUNCKEYS_X1_4620 = 8,
    MODULE_LAYERED_FUNCKEYS = 9,
    MODULE_GUID = 10,
    MODULE_FUNCKEYS_X1_4630 = 11,
    MODULE_CONFIG_SECTION = 13,
    MODULE_LAYER_FUNCKEY_DESC = 255, // has a fixed address, whether listed or not
};

// The id's name as above ("MODULE_KEYBOARD" for 0); empty for an unknown id.
[[nodiscard]] std::string_view NameOf(KeyboardModuleIDs eModule);

} // namespace qx
