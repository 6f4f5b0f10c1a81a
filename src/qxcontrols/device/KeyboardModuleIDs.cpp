#include "qxcontrols/device/KeyboardModuleIDs.h"

namespace qx {

namespace {

struct Name {
    KeyboardModuleIDs id;
    std::string_view text;
};

constexpr Name kNames[] = {
    {MODULE_KEYBOARD, "MODULE_KEYBOARD"},
    {MODULE_BARCODE_CONFIG, "MODULE_BARCODE_CONFIG"},
    {MODULE_BARCODE_HEADERS, "MODULE_BARCODE_HEADERS"},
    {MODULE_MAGNET_CONFIG, "MODULE_MAGNET_CONFIG"},
    {MODULE_MAGNET_HEADERS, "MODULE_MAGNET_HEADERS"},
    {MODULE_FREEPROGRAMMABLE_KEYS, "MODULE_FREEPROGRAMMABLE_KEYS"},
    {MODULE_POS, "MODULE_POS"},
    {MODULE_FUNCKEYS_X1_4610, "MODULE_FUNCKEYS_X1_4610"},
    {MODULE_FUNCKEYS_X1_4620, "MODULE_FUNCKEYS_X1_4620"},
    {MODULE_LAYERED_FUNCKEYS, "MODULE_LAYERED_FUNCKEYS"},
    {MODULE_GUID, "MODULE_GUID"},
    {MODULE_FUNCKEYS_X1_4630, "MODULE_FUNCKEYS_X1_4630"},
    {MODULE_CONFIG_SECTION, "MODULE_CONFIG_SECTION"},
    {MODULE_LAYER_FUNCKEY_DESC, "MODULE_LAYER_FUNCKEY_DESC"},
};

} // namespace

std::string_view NameOf(KeyboardModuleIDs eModule) {
    for (const Name& name : kNames)
        if (name.id == eModule)
            return name.text;
    return {};
}

} // namespace qx
