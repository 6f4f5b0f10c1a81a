#include "simulator/KeyboardModel.h"
#include "files/SystemTexts.h"

#include "files/Files.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/device/Identification.h"
#include "qxcontrols/keyprog/FreeProgKeysBlock.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/readers/BarcodeBlocks.h"
#include "qxcontrols/readers/MagneticBlocks.h"
#include "simulator/MemoryMap.h"
#include "simulator/ShippedModels.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <set>
#include <stdexcept>

namespace qx::sim {

namespace {

using Json = nlohmann::json;

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

// The modules that a keyboard can have in its directory, and what their areas need at most. Which
// keys are free is for the layout to say: their areas have room for every position code.
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
    {MODULE_GUID, kFuncKeyGuidSize},
    // These may be listed, and have no area that any setting lies in.
    {MODULE_KEYBOARD, 0},
    {MODULE_CONFIG_SECTION, 0},
    {MODULE_LAYER_FUNCKEY_DESC, 0},
};

// More than any model needs, and so many entries as a driver can count.
constexpr std::size_t kMostOfModel = 1U << 20U;
constexpr std::size_t kMostEntries = 0x7FFF;

constexpr std::size_t kMostShown = 40; // bytes of a value, in messages

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

[[noreturn]] void Refuse(const std::string& place, const std::string& message) {
    throw std::runtime_error((place.empty() ? "" : Shortened(place) + ": ") + Shortened(message));
}

// Reads JSON that names no member twice: of two values nobody could tell which was meant. How deep
// it is nested is limited, as for any file that others write.
Json ParseStrictly(const std::string& text) {
    std::vector<std::set<std::string>> open;
    const auto watch = [&](int depth, Json::parse_event_t event, Json& parsed) {
        constexpr int kMostDepth = 64;
        if (depth > kMostDepth)
            Refuse("", "nested more than " + std::to_string(kMostDepth) + " deep");
        if (event == Json::parse_event_t::object_start)
            open.emplace_back();
        else if (event == Json::parse_event_t::object_end)
            open.pop_back();
        else if (event == Json::parse_event_t::key &&
                 !open.back().insert(parsed.get<std::string>()).second)
            Refuse("", "the member \"" + Shortened(parsed.get<std::string>(), kMostShown) +
                           "\" is given twice");
        return true;
    };
    try {
        return Json::parse(text, watch);
    } catch (const Json::parse_error& error) {
        Refuse("offset " + std::to_string(error.byte), "not valid JSON");
    } catch (const Json::out_of_range& error) { // a number too large
        const std::string reason = error.what();
        Refuse("", "not valid JSON: " + reason.substr(reason.find("] ") + 2)); // without its number
    }
}

// An object and where it stands. Every member that is read must be there, and no other.
class Members {
public:
    Members(const Json& object, std::string place, std::initializer_list<std::string_view> known)
        : m_object(object), m_place(std::move(place)) {
        if (!object.is_object())
            Refuse(m_place, "not an object");
        for (const auto& [key, value] : object.items())
            if (std::find(known.begin(), known.end(), key) == known.end())
                Refuse(Place(key), "unknown member");
    }

    [[nodiscard]] std::string Place(const std::string& key) const { return m_place + "/" + key; }

    [[nodiscard]] const Json& Get(const std::string& key) const {
        const auto found = m_object.find(key);
        if (found == m_object.end())
            Refuse(Place(key), "missing");
        return *found;
    }

    // Text of 8-bit characters, which is what the keyboard knows.
    [[nodiscard]] std::string Text(const std::string& key, std::size_t most) const {
        const Json& value = Get(key);
        if (!value.is_string())
            Refuse(Place(key), "not a text");
        std::string text = value.get<std::string>();
        const bool isPlain =
            std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
        if (!isPlain || text.size() > most)
            Refuse(Place(key),
                   "not a text of at most " + std::to_string(most) + " printable ASCII characters");
        return text;
    }

private:
    const Json& m_object;
    std::string m_place;
};

bool ReadFlag(const Json& value, const std::string& place) {
    if (!value.is_boolean())
        Refuse(place, "neither true nor false");
    return value.get<bool>();
}

Byte ReadCapabilities(const Json& json, const std::string& place) {
    const Members members(json, place,
                          {"freeProgrammableKeys", "connectionV24", "chipcardReader",
                           "barcodeReader", "magneticTracks"});
    Byte capabilities = 0;
    for (const CapabilityFlag& flag : kCapabilityFlags)
        if (ReadFlag(members.Get(flag.key), members.Place(flag.key)))
            capabilities |= flag.mask;
    const std::string tracksPlace = members.Place("magneticTracks");
    const Json& tracks = members.Get("magneticTracks");
    if (!tracks.is_array() || tracks.size() != std::size(kTrackBits))
        Refuse(tracksPlace, "not a list of four flags");
    for (std::size_t i = 0; i < std::size(kTrackBits); ++i)
        if (ReadFlag(tracks[i], tracksPlace + "/" + std::to_string(i)))
            capabilities |= kTrackBits[i];
    return capabilities;
}

// Reads an entry whose area meets none of those taken, and adds its area to them.
KeyboardModel::Entry ReadEntry(const Json& json, const std::string& place,
                               std::vector<Area>& taken) {
    const Members members(json, place, {"module", "address"});
    const Json& name = members.Get("module");
    const auto* module =
        std::find_if(std::begin(kModules), std::end(kModules),
                     [&](const Module& known) { return name == NameOf(known.id); });
    if (module == std::end(kModules))
        Refuse(members.Place("module"),
               Shortened(name.dump(-1, ' ', false, Json::error_handler_t::replace), kMostShown) +
                   " is not a module of a directory");
    const Json& address = members.Get("address");
    const Long highest = kMemorySize - module->size;
    if (!address.is_number_unsigned() || address.get<std::uint64_t>() > std::uint64_t(highest))
        Refuse(members.Place("address"), "not an address from 0 to " + std::to_string(highest));
    const Area area{NameOf(module->id), address.get<Long>(), module->size};
    for (const Area& other : taken)
        if (module->size > 0 && area.Meets(other))
            Refuse(members.Place("address"), "the area, up to " + std::to_string(area.End() - 1) +
                                                 ", meets that of " + std::string(other.name) +
                                                 ", from " + std::to_string(other.address) +
                                                 " to " + std::to_string(other.End() - 1));
    if (module->size > 0)
        taken.push_back(area);
    return {module->id, area.address};
}

void ReadKeyboard(const Json& json, KeyboardModel& model) {
    const Members members(json, "/keyboard",
                          {"name", "bootloader", "program", "country", "config", "flags"});
    for (const ModelText& text : kModelTexts)
        model.*text.text = members.Text(text.key, text.place.length);
    model.capabilities = ReadCapabilities(members.Get("flags"), members.Place("flags"));
}

} // namespace

KeyboardModel KeyboardModel::FromJson(std::string json) {
    if (json.size() > kMostOfModel)
        Refuse("", "more than " + std::to_string(kMostOfModel) + " bytes");
    const Json document = ParseStrictly(json);
    const Members members(document, "", {"keyboard", "layout", "directory"});
    KeyboardModel model;
    ReadKeyboard(members.Get("keyboard"), model);
    constexpr std::size_t kMostOfFileName = 255;
    model.layout = members.Text("layout", kMostOfFileName);
    if (model.layout.empty() || model.layout.find_first_of("/\\:") != std::string::npos)
        Refuse("/layout", "not the name of a file");
    const Json& directory = members.Get("directory");
    if (!directory.is_array() || directory.empty() || directory.size() > kMostEntries)
        Refuse("/directory", "not a list of 1 to " + std::to_string(kMostEntries) + " modules");
    std::vector<Area> taken(kFixedAreas.begin(), kFixedAreas.end());
    for (std::size_t i = 0; i < directory.size(); ++i)
        model.directory.push_back(
            ReadEntry(directory[i], "/directory/" + std::to_string(i), taken));
    model.json = std::move(json);
    return model;
}

KeyboardModel KeyboardModel::ByName(const std::string& nameOrPath) {
    std::string text;
    std::string names;
    for (const ShippedModel& model : kShippedModels) {
        names += (names.empty() ? "" : ", ") + std::string(model.name);
        if (model.name == nameOrPath)
            text = model.json;
    }
    try {
        if (text.empty())
            text = files::ReadFile(files::PathOf(nameOrPath), kMostOfModel);
    } catch (const std::exception& error) {
        throw std::runtime_error("there is no model \"" + nameOrPath +
                                 "\": the built-in ones are " + names + ", and as a file, " +
                                 error.what());
    }
    try {
        return FromJson(std::move(text));
    } catch (const std::exception& error) {
        throw std::runtime_error("the model " + nameOrPath + " is invalid: " + error.what());
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
