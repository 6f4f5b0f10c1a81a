#include "simulator/KeyboardModel.h"

#include "files/Files.h"
#include "simulator/ShippedModels.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace qx::sim {

namespace {

using Json = nlohmann::json;

[[noreturn]] void Refuse(const std::string& place, const std::string& message) {
    throw std::runtime_error(place + ": " + message);
}

// The members of an object.
class Members {
public:
    Members(const Json& object, std::string place) : m_object(object), m_place(std::move(place)) {
        if (!object.is_object())
            Refuse(m_place, "not an object");
    }

    const Json& Get(const std::string& key) {
        const auto found = m_object.find(key);
        if (found == m_object.end())
            Refuse(m_place, "\"" + key + "\" is missing");
        return *found;
    }

    std::string Text(const std::string& key, std::size_t most) {
        const Json& value = Get(key);
        if (!value.is_string() || value.get<std::string>().size() > most)
            Refuse(m_place + "/" + key, "not a text of at most " + std::to_string(most) + " bytes");
        return value.get<std::string>();
    }

    bool Flag(const std::string& key) {
        const Json& value = Get(key);
        if (!value.is_boolean())
            Refuse(m_place + "/" + key, "neither true nor false");
        return value.get<bool>();
    }

    // Refuses members of other names.
    void End(std::initializer_list<std::string_view> known) const {
        for (const auto& [key, value] : m_object.items())
            if (std::find(known.begin(), known.end(), key) == known.end())
                Refuse(m_place + "/" + key, "\"" + key + "\" is not known here");
    }

private:
    const Json& m_object;
    std::string m_place;
};

struct CapabilityFlag {
    const char* key;
    Byte mask;
};

constexpr CapabilityFlag kCapabilityFlags[] = {
    {"freeProgrammableKeys", 0x01},
    {"connectionV24", 0x02},
    {"chipcardReader", 0x04},
    {"barcodeReader", 0x08},
};
constexpr Byte kTrackMasks[] = {0x80, 0x40, 0x20, 0x10};

Byte ReadCapabilities(const Json& json, const std::string& place) {
    Members members(json, place);
    Byte capabilities = 0;
    for (const CapabilityFlag& flag : kCapabilityFlags)
        if (members.Flag(flag.key))
            capabilities |= flag.mask;
    const Json& tracks = members.Get("magneticTracks");
    if (!tracks.is_array() || tracks.size() != std::size(kTrackMasks))
        Refuse(place + "/magneticTracks", "not a list of four flags");
    for (std::size_t i = 0; i < std::size(kTrackMasks); ++i) {
        if (!tracks[i].is_boolean())
            Refuse(place + "/magneticTracks/" + std::to_string(i), "neither true nor false");
        if (tracks[i].get<bool>())
            capabilities |= kTrackMasks[i];
    }
    members.End({"freeProgrammableKeys", "connectionV24", "chipcardReader", "barcodeReader",
                 "magneticTracks"});
    return capabilities;
}

KeyboardModel::Entry ReadEntry(const Json& json, const std::string& place) {
    Members members(json, place);
    const std::string name = members.Text("module", 64);
    const Json& address = members.Get("address");
    members.End({"module", "address"});
    constexpr Long kHighestAddress = 0x1FFFF;
    if (!address.is_number_unsigned() || address.get<std::uint64_t>() > kHighestAddress)
        Refuse(place + "/address", "not an address from 0 to " + std::to_string(kHighestAddress));
    for (Long id = 0; id <= MODULE_LAYER_FUNCKEY_DESC; ++id)
        if (NameOf(static_cast<KeyboardModuleIDs>(id)) == name)
            return {static_cast<KeyboardModuleIDs>(id), address.get<Long>()};
    Refuse(place + "/module", "\"" + name + "\" is no module");
}

void ReadKeyboard(const Json& json, KeyboardModel& model) {
    constexpr std::size_t kNameSize = 16;
    constexpr std::size_t kVersionSize = 4;
    Members members(json, "/keyboard");
    model.name = members.Text("name", kNameSize);
    model.bootloader = members.Text("bootloader", kVersionSize);
    model.program = members.Text("program", kVersionSize);
    model.country = members.Text("country", kVersionSize);
    model.config = members.Text("config", kVersionSize);
    model.capabilities = ReadCapabilities(members.Get("flags"), "/keyboard/flags");
    members.End({"name", "bootloader", "program", "country", "config", "flags"});
}

} // namespace

KeyboardModel KeyboardModel::FromJson(std::string_view json) {
    Json document;
    try {
        document = Json::parse(json);
    } catch (const Json::parse_error& error) {
        throw std::runtime_error("byte " + std::to_string(error.byte) + ": not valid JSON");
    }
    KeyboardModel model;
    Members members(document, "");
    ReadKeyboard(members.Get("keyboard"), model);
    model.layout = members.Text("layout", 255);
    const Json& directory = members.Get("directory");
    if (!directory.is_array() || directory.empty())
        Refuse("/directory", "not a list of modules");
    for (std::size_t i = 0; i < directory.size(); ++i)
        model.directory.push_back(ReadEntry(directory[i], "/directory/" + std::to_string(i)));
    members.End({"keyboard", "layout", "directory"});
    return model;
}

std::string KeyboardModel::TextOf(const std::string& nameOrPath) {
    for (const ShippedModel& model : kShippedModels)
        if (model.name == nameOrPath)
            return std::string(model.json);
    try {
        return files::ReadFile(nameOrPath);
    } catch (const std::runtime_error&) {
        std::string names;
        for (const std::string& name : Names())
            names += names.empty() ? name : ", " + name;
        throw std::runtime_error("there is no model \"" + nameOrPath +
                                 "\", neither a shipped one (" + names + ") nor a file");
    }
}

std::vector<std::string> KeyboardModel::Names() {
    std::vector<std::string> names;
    for (const ShippedModel& model : kShippedModels)
        names.emplace_back(model.name);
    return names;
}

std::string KeyboardModel::IdentificationBlock() const {
    constexpr std::size_t kNameSize = 16;
    constexpr std::size_t kVersionSize = 4;
    std::string block = name;
    block.resize(kNameSize, '\0');
    for (const std::string* version : {&bootloader, &program, &country, &config}) {
        block += *version;
        block.append(kVersionSize - version->size(), ' ');
    }
    return block;
}

} // namespace qx::sim
