// RecordMembers: the members of a record, written and read by one walk, which names each once:
//
//     template <typename AnyReceipt, typename Visit>
//     void VisitMembers(AnyReceipt& receipt, Visit visit) {
//         visit("time", receipt.time);
//
// The order of the walk is that in the file. Further kinds of values add a pair of JsonOf and Take.
#pragma once

#include "host/KeyboardContent.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qx::host {

// What JSON can express by itself.
template <typename Plain>
[[nodiscard]] Json JsonOf(const Plain& value) {
    return value;
}
template <typename Plain>
void Take(const Json& json, Plain& value) {
    value = json.get<Plain>();
}

[[nodiscard]] inline Json JsonOf(const KeyboardIdentity& identity) {
    return ToJson(identity);
}
inline void Take(const Json& json, KeyboardIdentity& identity) {
    identity = IdentityFromJson(json);
}

[[nodiscard]] inline Json JsonOf(const std::optional<Long>& number) {
    return number ? Json(*number) : Json();
}
inline void Take(const Json& json, std::optional<Long>& number) {
    number = json.is_null() ? std::nullopt : std::optional(NumberFromJson<Long>(json));
}

[[nodiscard]] inline Json JsonOf(const std::vector<ByteRange>& ranges) {
    Json json = Json::array();
    for (const ByteRange& range : ranges)
        json.push_back(ToJson(range));
    return json;
}
inline void Take(const Json& json, std::vector<ByteRange>& ranges) {
    for (const Json& range : json)
        ranges.push_back(RangeFromJson(range));
}

// Areas without their bytes.
[[nodiscard]] inline Json JsonOf(const std::vector<ContentPiece>& areas) {
    Json json = Json::array();
    for (const ContentPiece& area : areas)
        json.push_back({{"module", static_cast<Long>(area.module)},
                        {"section", area.section},
                        {"address", area.address},
                        {"size", area.bytes.size()}});
    return json;
}
inline void Take(const Json& json, std::vector<ContentPiece>& areas) {
    for (const Json& area : json)
        areas.push_back(
            {static_cast<KeyboardModuleIDs>(NumberFromJson<std::int16_t>(area.at("module"))),
             area.at("section").get<std::string>(), NumberFromJson<Long>(area.at("address")),
             std::string(NumberFromJson<std::uint16_t>(area.at("size")), '\0')});
}

// `walk` calls what it is given with each member's key and value. Reading throws std::exception
// when a member is missing or wrong.
template <typename Walk>
[[nodiscard]] Json MembersToJson(Walk walk) {
    Json json = Json::object();
    walk([&](const char* key, const auto& value) { json[key] = JsonOf(value); });
    return json;
}
template <typename Walk>
void MembersFromJson(const Json& json, Walk walk) {
    walk([&](const char* key, auto& value) { Take(json.at(key), value); });
}

} // namespace qx::host
