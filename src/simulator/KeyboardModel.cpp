#include "simulator/KeyboardModel.h"

#include "files/Files.h"
#include "files/Limits.h"
#include "files/SystemTexts.h"
#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/keys/KeyboardSequences.h"
#include "simulator/FixedAreas.h"
#include "simulator/ShippedModels.h"
#include "json/Reader.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace qx::sim {

namespace {

using json::FaultKind;
using json::Object;
using json::Value;

struct ModelText {
    const char* key;
    IdentificationText place;
    std::string KeyboardModel::*text;
};
constexpr ModelText kModelTexts[] = {
    {"name", kKeyboardText, &KeyboardModel::name},
    {"bootloader", kBootloaderText, &KeyboardModel::bootloader},
    {"program", kProgramText, &KeyboardModel::program},
    {"country", kCountryText, &KeyboardModel::country},
    {"config", kConfigText, &KeyboardModel::config},
};

// The modules that a keyboard's directory can list, and the largest size of their areas. The layout
// determines which keys are free, so their areas have room for every position code.
constexpr Long kFreeKeysSize = (KeyboardSequences::kMaxKeyID + 1) * kFreeProgKeySlotSize;
struct Module {
    KeyboardModuleIDs id;
    Long size;
};
constexpr Module kModules[] = {
    {MODULE_MAGNET_CONFIG, kMagneticSwitchesOffset + kMagneticSwitchesSize},
    {MODULE_BARCODE_CONFIG, kBarcodeConfigSize},
    {MODULE_BARCODE_HEADERS, kBarcodeHeadersSize},
    {MODULE_MAGNET_HEADERS, kMagneticHeadersSize},
    {MODULE_FREEPROGRAMMABLE_KEYS, kFreeKeysSize},
    {MODULE_POS, kPOSModuleBlockSize},
    {MODULE_FUNCKEYS_X1_4610, kFreeKeysSize},
    {MODULE_FUNCKEYS_X1_4620, kFreeKeysSize},
    {MODULE_FUNCKEYS_X1_4630, kFreeKeysSize},
    {MODULE_LAYERED_FUNCKEYS, kFuncKeySequencesSize},
    {MODULE_GUID, kGuidSize},
    // Allowed in the directory, but no setting is stored in their areas.
    {MODULE_KEYBOARD, 0},
    {MODULE_CONFIG_SECTION, 0},
    {MODULE_LAYER_FUNCKEY_DESC, 0},
};

constexpr std::size_t kMostEntries = 0x7FFF; // as many as a driver can count

struct CapabilityFlag {
    const char* key;
    Byte mask;
};
constexpr CapabilityFlag kCapabilityFlags[] = {
    {"freeProgrammableKeys", kFreeProgKeysBit},
    {"connectionV24", kConnectionV24Bit},
    {"chipcardReader", kChipcardReaderBit},
    {"barcodeReader", kBarcodeReaderBit},
};

// 8-bit text: the keyboard supports no other.
std::optional<std::string> PlainText(const Value& value, std::size_t most) {
    const auto text = value.Text();
    const auto isPlain = [](char c) { return c >= ' ' && c <= '~'; };
    if (!text || (text->size() <= most && std::all_of(text->begin(), text->end(), isPlain)))
        return text;
    value.RefuseAs(FaultKind::NotPlainText, most);
    return std::nullopt;
}

Byte ReadCapabilities(const Value& value) {
    Object flags(value);
    Byte capabilities = 0;
    for (const CapabilityFlag& flag : kCapabilityFlags)
        if (flags.Get(flag.key).Flag().value_or(false))
            capabilities |= flag.mask;
    const auto tracks = flags.Get("magneticTracks").Elements(std::size(kTrackBits));
    for (std::size_t i = 0; i < tracks.size(); ++i)
        if (tracks[i].Flag().value_or(false))
            capabilities |= kTrackBits[i];
    flags.RefuseOthers();
    return capabilities;
}

const Module* ReadModule(const Value& value) {
    const auto name = value.Text();
    const auto* module =
        std::find_if(std::begin(kModules), std::end(kModules),
                     [&](const Module& known) { return name == NameOf(known.id); });
    if (module != std::end(kModules))
        return module;
    if (name)
        value.RefuseAs(FaultKind::NotAModule);
    return nullptr;
}

// Reads an entry whose area overlaps none of `taken`, and adds its area to them.
std::optional<KeyboardModel::Entry> ReadEntry(const Value& value, std::vector<Area>& taken) {
    Object entry(value);
    const Module* module = ReadModule(entry.Get("module"));
    const Value address = entry.Get("address");
    entry.RefuseOthers();
    if (module == nullptr)
        return std::nullopt;
    const auto start = address.WholeNumber<Long>(0, kMemorySize - module->size);
    if (!start)
        return std::nullopt;
    const Area area{NameOf(module->id), *start, module->size};
    for (const Area& other : taken)
        if (module->size > 0 && area.Meets(other))
            address.Refuse(FaultKind::AreasMeet, area.End() - 1, other.name, other.address,
                           other.End() - 1);
    if (module->size > 0)
        taken.push_back(area);
    return KeyboardModel::Entry{module->id, area.address};
}

void ReadKeyboard(const Value& value, KeyboardModel& model) {
    Object keyboard(value);
    for (const ModelText& text : kModelTexts)
        model.*text.text = PlainText(keyboard.Get(text.key), text.place.length).value_or("");
    model.capabilities = ReadCapabilities(keyboard.Get("flags"));
    keyboard.RefuseOthers();
}

void ReadDirectory(const Value& value, KeyboardModel& model) {
    const std::vector<Value> entries = value.Elements();
    if (value.Exists() && value.AsJson().is_array() && entries.empty())
        value.Refuse(FaultKind::EmptyList);
    if (entries.size() > kMostEntries)
        value.Refuse(FaultKind::ListTooLong, kMostEntries);
    std::vector<Area> taken(kFixedAreas.begin(), kFixedAreas.end());
    for (const Value& entry : entries)
        if (const auto read = ReadEntry(entry, taken))
            model.directory.push_back(*read);
}

} // namespace

KeyboardModel KeyboardModel::FromJson(std::string text) {
    const json::Json document = json::ParseStrictly(text, files::kMostOfModel);
    json::Faults faults;
    Object whole(Value(document, "", faults));
    KeyboardModel model;
    ReadKeyboard(whole.Get("keyboard"), model);
    constexpr std::size_t kMostOfFileName = 255;
    const Value layout = whole.Get("layout");
    const auto name = PlainText(layout, kMostOfFileName);
    if (name && (name->empty() || name->find_first_of("/\\:") != std::string::npos))
        layout.RefuseAs(FaultKind::NotAFileName);
    model.layout = name.value_or("");
    ReadDirectory(whole.Get("directory"), model);
    whole.RefuseOthers();
    faults.ThrowAny();
    model.json = std::move(text);
    return model;
}

KeyboardModel KeyboardModel::ByName(const std::string& nameOrPath) {
    const auto file = files::PathOf(nameOrPath);
    std::string text;
    for (const ShippedModel& model : kShippedModels)
        if (model.name == nameOrPath)
            text = model.json;
    std::error_code reason;
    if (text.empty() && !std::filesystem::exists(file, reason))
        throw files::ProblemError({.deed = files::Deed::Read,
                                   .subject = nameOrPath,
                                   .obstacle = files::Obstacle::NoSuchModel,
                                   .names = Names()});
    if (text.empty())
        text = files::ReadFile(file, files::kMostOfModel);
    try {
        return FromJson(std::move(text));
    } catch (const json::FaultError& error) {
        throw ModelError(nameOrPath, error.Faults());
    }
}

std::vector<std::string> KeyboardModel::Names() {
    std::vector<std::string> names;
    for (const ShippedModel& model : kShippedModels)
        names.emplace_back(model.name);
    return names;
}

std::optional<Long> KeyboardModel::AddressOf(KeyboardModuleIDs eModule) const {
    for (const Entry& entry : directory)
        if (entry.module == eModule)
            return entry.address;
    return std::nullopt;
}

bool KeyboardModel::HasBarcodeReader() const {
    return (capabilities & kBarcodeReaderBit) != 0;
}

bool KeyboardModel::HasMagneticTrack(Integer nTrack) const {
    return (capabilities & kTrackBits[nTrack - 1]) != 0;
}

std::string KeyboardModel::IdentificationBlock() const {
    std::string block(static_cast<std::size_t>(kIdentification.size), ' ');
    for (const ModelText& part : kModelTexts)
        block.replace(part.place.start, (this->*part.text).size(), this->*part.text);
    return block;
}

} // namespace qx::sim
