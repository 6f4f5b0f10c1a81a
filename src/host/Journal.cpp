#include "host/Journal.h"

#include "files/SystemTexts.h"
#include "host/Error.h"
#include "json/Members.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx::host {

namespace {

constexpr RecordFormat kFormat = {"qx-journal", 1, true};
constexpr std::string_view kEnding = ".journal.json";

// The name for all keyboards of this kind, whatever their GUIDs.
std::string KindName(KeyboardIdentity keyboard) {
    keyboard.guid.clear();
    return keyboard.FileName();
}

// Areas of which only the places are recorded.
template <typename Pieces>
struct WithoutBytes {
    Pieces& pieces;
};
template <typename Pieces>
WithoutBytes(Pieces&) -> WithoutBytes<Pieces>; // Clang 14 does not find it by itself

template <typename Pieces>
Json ToJson(const WithoutBytes<Pieces>& areas) {
    Json json = Json::array();
    for (const ContentPiece& area : areas.pieces)
        json.push_back({{"module", static_cast<Long>(area.module)},
                        {"section", area.section},
                        {"address", area.address},
                        {"size", area.bytes.size()}});
    return json;
}

void Take(const json::Value& value, const WithoutBytes<std::vector<ContentPiece>>& areas) {
    for (const json::Value& element : value.Elements()) {
        json::Object members(element);
        ContentPiece& area = areas.pieces.emplace_back();
        area.module = ModuleOf(members.Get("module"));
        json::Take(members.Get("section"), area.section);
        area.address = AddressOf(members.Get("address"));
        area.bytes.resize(members.Get("size").WholeNumber<std::uint16_t>().value_or(0));
        members.RefuseOthers();
    }
}

template <typename AnyEntry, typename Visit>
void VisitMembers(AnyEntry& entry, Visit visit) {
    visit("time", entry.time);
    visit("action", entry.action);
    visit("document", entry.document);
    visit("backup", entry.backup);
    visit("origin", entry.origin);
    visit("unit", entry.till.unit);
    visit("place", entry.till.place);
    visit("keyboard", entry.keyboard);
    visit("areas", WithoutBytes{entry.areas});
    visit("rest", entry.restHash);
    visit("replaced", entry.replaced);
    visit("ranges", entry.ranges);
}

} // namespace

std::string JournalEntry::Id() const {
    std::string name = files::TextOf(file.filename());
    name.resize(name.size() - kEnding.size());
    return name.substr(0, name.rfind('.')); // without the keyboard's name
}

WriteName JournalEntry::Name() const {
    return {Id(), action, document, till.unit, time};
}

KeyboardContent JournalEntry::RolledBack(KeyboardContent content) const {
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
        content.Overwrite(range->address, range->from);
    return content;
}

KeyboardContent JournalEntry::Finished(KeyboardContent content) const {
    for (const ByteRange& range : ranges)
        content.Overwrite(range.address, range.to);
    return content;
}

KeyboardContent JournalEntry::Ended(RecoverWay way, const KeyboardContent& now) const {
    return way == RecoverWay::Finish ? Finished(now) : RolledBack(now);
}

std::string JournalEntry::RestHashOf(KeyboardContent content) const {
    for (const ByteRange& range : ranges)
        content.Overwrite(range.address, std::string(range.to.size(), '\0'));
    return content.Hash();
}

bool JournalEntry::IsAlike(const JournalEntry& other) const {
    return ranges == other.ranges && restHash == other.restHash;
}

bool JournalEntry::HasAreasOf(const KeyboardContent& now) const {
    return std::equal(areas.begin(), areas.end(), now.pieces.begin(), now.pieces.end(),
                      [](const ContentPiece& area, const ContentPiece& piece) {
                          return area.address == piece.address &&
                                 area.bytes.size() == piece.bytes.size();
                      });
}

KeyboardContent JournalEntry::Areas() const {
    return {keyboard, areas};
}

Trace JournalEntry::TraceInRanges(const KeyboardContent& now) const {
    bool hasOld = false;
    bool hasNew = false;
    for (const ByteRange& range : ranges) {
        const std::string held = now.Bytes(range.address, range.Size());
        for (std::size_t i = 0; i < held.size(); ++i) {
            if (held[i] != range.from[i] && held[i] != range.to[i])
                return Trace::None;
            hasOld |= held[i] != range.to[i];
            hasNew |= held[i] != range.from[i];
        }
    }
    if (hasOld && hasNew)
        return Trace::Partial;
    return hasNew ? Trace::After : Trace::Before;
}

Trace JournalEntry::TraceIn(const KeyboardContent& now) const {
    if (!keyboard.IsLike(now.identity))
        return Trace::None;
    try {
        const Trace trace = TraceInRanges(now);
        return trace == Trace::None || RestHashOf(now) != restHash ? Trace::None : trace;
    } catch (const std::out_of_range&) { // it has other areas
        return Trace::None;
    }
}

void Journal::Begin(JournalEntry& entry, const KeyboardContent& before, Time time) const {
    entry.time = TimeText(time);
    entry.keyboard = before.identity;
    entry.areas = before.pieces;
    entry.restHash = entry.RestHashOf(before);
    // The name shows, even if the entry is damaged, whether it is of another keyboard.
    const bool keepsGuid = entry.Finished(before).identity.guid == entry.keyboard.guid;
    const std::string keyboard = keepsGuid ? entry.keyboard.FileName() : KindName(entry.keyboard);
    entry.file = WriteNewRecord(
        m_folder, time, "." + keyboard + std::string(kEnding), kFormat,
        json::MembersToJson([&](auto visit) { VisitMembers(std::as_const(entry), visit); }));
}

std::vector<JournalEntry> Journal::Entries(std::vector<DamagedRecord>* damaged) const {
    std::vector<JournalEntry> entries;
    const auto unusable = ReadRecords(
        m_folder, kEnding, kFormat, [&](const std::filesystem::path& file, json::Object& record) {
            JournalEntry entry;
            json::TakeMembers(record, [&](auto visit) { VisitMembers(entry, visit); });
            entry.file = file;
            entries.push_back(std::move(entry));
        });
    if (damaged != nullptr)
        damaged->insert(damaged->end(), unusable.begin(), unusable.end());
    return entries;
}

JournalEntry Journal::Find(const std::string& id) const {
    for (JournalEntry& entry : Entries())
        if (entry.Id() == id)
            return std::move(entry);
    throw Error(Cause::NoSuchWrite, {.name = id});
}

bool Journal::MayBeOf(const DamagedRecord& damaged, const KeyboardIdentity& keyboard) {
    std::string name = files::TextOf(damaged.file.filename());
    name.resize(name.size() - kEnding.size());
    const bool isNamed = std::count(name.begin(), name.end(), '.') > 1; // as this program does
    return !isNamed || name.ends_with("." + keyboard.FileName()) ||
           name.ends_with("." + KindName(keyboard));
}

} // namespace qx::host
