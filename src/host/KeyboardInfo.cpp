#include "host/KeyboardInfo.h"

#include "qxcontrols/device/QXKeyboardAccess.h"

namespace qx::host {

namespace {

constexpr std::size_t kMaxTextUnits = 64;

} // namespace

const std::array<KeyboardInfo::Text, 5> KeyboardInfo::kTexts = {{
    {{"name", "name"}, &KeyboardInfo::name},
    {{"bootloader", "bootloader"}, &KeyboardInfo::bootloader},
    {{"program", "firmware"}, &KeyboardInfo::program},
    {{"country", "country"}, &KeyboardInfo::country},
    {{"config", "configuration"}, &KeyboardInfo::config},
}};

KeyboardInfo KeyboardInfo::Of(const QXKeyboardAccess& keyboard) {
    KeyboardInfo info;
    info.name = keyboard.Keyboard();
    info.bootloader = keyboard.Bootloader();
    info.program = keyboard.Program();
    info.country = keyboard.Country();
    info.config = keyboard.Config();
    info.freeProgrammableKeys = keyboard.FlagFreeProgrammableKeys();
    info.connectionV24 = keyboard.FlagConnectionV24();
    info.chipcardReader = keyboard.FlagChicpcardReader();
    info.barcodeReader = keyboard.FlagBarcodeReader();
    info.magneticTracks = {keyboard.FlagMagneticTrack1(), keyboard.FlagMagneticTrack2(),
                           keyboard.FlagMagneticTrack3(), keyboard.FlagMagneticTrack4()};
    return info;
}

KeyboardInfo KeyboardInfo::In(const Json* note) {
    KeyboardInfo info;
    if (note != nullptr)
        for (const auto& [field, text] : kTexts)
            info.*text = note->value(field.key, "");
    return info;
}

void KeyboardInfo::Visit(FieldVisitor& fields) {
    const auto visitFlag = [&](const Field& field, bool& flag) { flag = fields.Flag(field, flag); };

    for (const auto& [field, text] : kTexts)
        this->*text = fields.Text(field, this->*text, kMaxTextUnits);
    fields.Object({"flags", ""}, [&] {
        visitFlag({"freeProgrammableKeys", "free keys"}, freeProgrammableKeys);
        visitFlag({"connectionV24", "V.24 connection"}, connectionV24);
        visitFlag({"chipcardReader", "chipcard reader"}, chipcardReader);
        visitFlag({"barcodeReader", "barcode reader"}, barcodeReader);
        fields.Array(
            {"magneticTracks", "magnetic track"}, magneticTracks.size(), 1,
            [&](const Field& field, std::size_t i) { visitFlag(field, magneticTracks[i]); });
    });
}

} // namespace qx::host
