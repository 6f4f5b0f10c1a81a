#include "host/WritePlan.h"

#include "host/Session.h"
#include "qxcontrols/common/Text.h"

#include <algorithm>
#include <map>

namespace qx::host {

namespace {

std::set<std::string, std::less<>> KeysOf(const std::vector<Section*>& sections) {
    std::set<std::string, std::less<>> keys;
    for (const Section* section : sections)
        keys.emplace(section->Info().key);
    return keys;
}

// Copies the bytes of `held` to the slots of `wanted` that equal `usual`; they have the same
// meaning.
void KeepUnused(const Section& section, const std::vector<PlacedArea>& areas,
                const KeyboardContent& held, const KeyboardContent& usual,
                KeyboardContent& wanted) {
    for (const PlacedArea& area : areas)
        for (Long done = 0; area.slotSize > 0 && done < area.size; done += area.slotSize) {
            const Long size = std::min(area.slotSize, area.size - done);
            const Long address = area.address + done;
            std::string bytes = wanted.Bytes(address, size);
            if (bytes == usual.Bytes(address, size))
                bytes = held.Bytes(address, size);
            else if (size == area.size)
                section.KeepUnused(held.Bytes(address, size), usual.Bytes(address, size), bytes);
            wanted.Overwrite(address, bytes);
        }
}

std::string Spaced(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes)
        text += (text.empty() ? "" : " ") + HexBytes({&byte, 1});
    return text;
}

// Bytes that must have fixed values and have others in the keyboard.
std::vector<Difference> FixedBytes(const Section& section, const std::vector<PlacedArea>& areas,
                                   const KeyboardContent& held, const KeyboardContent& usual) {
    std::string from;
    std::string to;
    for (const PlacedArea& area : areas) {
        if (area.slotSize > 0)
            continue;
        const std::string before = held.Bytes(area.address, area.size);
        const std::string after = usual.Bytes(area.address, area.size);
        for (std::size_t i = 0; i < before.size(); ++i)
            if (before[i] != after[i]) {
                from += before[i];
                to += after[i];
            }
    }
    if (from.empty())
        return {};
    SettingName name = NameOf(section.Info());
    name.parts.push_back({"fixedBytes", "Fixed bytes", {}});
    return {{"/" + std::string(section.Info().key),
             std::move(name),
             {SettingValue::Kind::Text, Spaced(from)},
             {SettingValue::Kind::Text, Spaced(to)}}};
}

} // namespace

Long WritePlan::BytesToSend() const {
    Long bytes = 0;
    for (const PlannedRange& range : ranges)
        bytes += range.Size();
    return bytes;
}

Long WritePlan::BytesInAll() const {
    Long bytes = 0;
    for (const auto& request : requests)
        bytes += request.size;
    return bytes;
}

std::vector<ByteRange> WritePlan::ToSend(bool full) const {
    if (!full)
        return {ranges.begin(), ranges.end()};
    std::vector<ByteRange> all;
    for (const auto& request : requests)
        all.push_back({request.module, "", request.address,
                       before.Bytes(request.address, request.size),
                       after.Bytes(request.address, request.size)});
    return all;
}

Planner::Planner(KeyboardContent content, Configuration& scratch)
    : m_content(std::move(content)), m_scratch(scratch) {}

Planner::Encoded Planner::Encode(const std::vector<Section*>& sections) const {
    CopiedKeyboard copy(m_content);
    Session session(copy);
    session.Open();
    session.Download(sections);
    return {copy.Content(), copy.LastSaved()};
}

Planner::Decoded Planner::Decode(const KeyboardContent& content, const Keys& keys) {
    CopiedKeyboard copy(content);
    Session session(copy);
    session.Open();
    Decoded decoded;
    decoded.sections = session.Present(m_scratch);
    std::erase_if(decoded.sections,
                  [&](const Section* each) { return !keys.contains(each->Info().key); });
    decoded.damaged = session.Upload(decoded.sections);
    for (Section* section : decoded.sections)
        decoded.settings.push_back(Snapshot::Of(*section));
    return decoded;
}

WritePlan Planner::ForSettings(const std::vector<Section*>& sections, const PlanOptions& options) {
    const Decoded held = Decode(m_content, KeysOf(sections));
    if (!held.damaged.empty() && !options.repair)
        throw Error(Cause::KeyboardDamaged, {.holds = Holds::NotTouched, .faults = held.damaged});
    const KeyboardContent usual = Encode(held.sections).content;
    auto [after, requests] = Encode(sections);
    WritePlan plan{m_content, {}, {}, {}, std::move(requests), {}, {}};
    CopiedKeyboard copy(m_content);
    Session session(copy);
    session.Open();
    for (Section* section : held.sections) {
        const auto areas = session.Areas(*section);
        if (!options.full)
            KeepUnused(*section, areas, m_content, usual, after);
        const auto fixed = FixedBytes(*section, areas, m_content, usual);
        plan.settings.insert(plan.settings.end(), fixed.begin(), fixed.end());
    }
    plan.after = std::move(after);
    Finish(plan);
    return plan;
}

std::vector<Fault> Planner::Damaged(const std::vector<Section*>& sections) {
    return Decode(m_content, KeysOf(sections)).damaged;
}

WritePlan Planner::ForContent(const KeyboardContent& wanted) {
    WritePlan plan{m_content, wanted, {}, {}, {}, {}, {}};
    for (const ContentPiece& piece : wanted.pieces)
        plan.requests.push_back(
            {piece.module, piece.address, static_cast<Long>(piece.bytes.size())});
    Finish(plan);
    return plan;
}

WritePlan Planner::ForBackup(const KeyboardContent& backup, bool withGuid) {
    KeyboardContent wanted = m_content;
    std::set<std::string> unsaved;
    Long restored = 0;
    for (ContentPiece& piece : wanted.pieces) {
        if (piece.module == MODULE_GUID && !withGuid)
            continue;
        std::size_t known = 0;
        for (const ContentPiece& saved : backup.pieces) {
            const Long start = std::max(piece.address, saved.address);
            const Long end = std::min(piece.End(), saved.End());
            if (start >= end)
                continue;
            const auto size = static_cast<std::size_t>(end - start);
            piece.bytes.replace(static_cast<std::size_t>(start - piece.address), size, saved.bytes,
                                static_cast<std::size_t>(start - saved.address), size);
            known += size;
        }
        restored += static_cast<Long>(known);
        if (known < piece.bytes.size())
            unsaved.insert(piece.section.empty() ? std::string(NameOf(piece.module))
                                                 : piece.section);
    }
    wanted.UpdateGuid();
    WritePlan plan = ForContent(wanted);
    for (const std::string& section : unsaved)
        plan.notRestored.push_back({section, 0});
    Long saved = 0;
    for (const ContentPiece& piece : backup.pieces)
        if (piece.module != MODULE_GUID || withGuid)
            saved += static_cast<Long>(piece.bytes.size());
    if (restored < saved)
        plan.notRestored.push_back({{}, saved - restored});
    return plan;
}

void Planner::Finish(WritePlan& plan) {
    Keys changed;
    for (ByteRange& range : Differences(plan.before, plan.after, kRequestCost)) {
        changed.insert(range.section);
        plan.ranges.push_back({std::move(range), {}, false});
    }
    const Decoded before = Decode(plan.before, changed);
    for (const Fault& fault : before.damaged)
        for (PlannedRange& range : plan.ranges)
            range.isDamaged = range.isDamaged || fault.place == "/" + range.section;
    const auto settings = Compare(before, plan.after, changed);
    plan.settings.insert(plan.settings.end(), settings.begin(), settings.end());
}

// All settings are read a few times, each time without the ranges selected by one bit of the
// range's number. The reads in which a setting is missing spell its range's number. If a setting
// may need several ranges, because its slot is all of the section's memory, the section itself
// knows them.
void Planner::NameSettings(WritePlan& plan) {
    std::set<std::string, std::less<>> known;
    for (PlannedRange& first : plan.ranges) {
        if (first.section.empty() || !known.insert(first.section).second)
            continue;
        const Keys keys{first.section};
        std::vector<PlannedRange*> ranges;
        for (PlannedRange& range : plan.ranges)
            if (range.section == first.section)
                ranges.push_back(&range);
        const Decoded before = Decode(plan.before, keys);
        Changes changes;
        for (const Difference& difference : Compare(before, plan.after, keys))
            changes.emplace(difference.place, difference);
        const auto missedWithout = [&](const auto& isLeftOut) {
            KeyboardContent without = plan.after;
            for (std::size_t i = 0; i < ranges.size(); ++i)
                if (isLeftOut(i + 1))
                    without.Overwrite(ranges[i]->address, ranges[i]->from);
            std::set<std::string> missed;
            for (const Difference& difference : Compare(Decode(without, keys), plan.after, keys))
                missed.insert(difference.place);
            return missed;
        };
        const Section& section = *m_scratch.Find(first.section);
        if (const Area& area = section.Info().areas.front(); area.slotSize == area.size) {
            NameSettingsOfSlot(section, plan, ranges, changes);
            continue;
        }
        std::map<std::string, std::size_t> rangeOf; // numbered from 1
        for (std::size_t bit = 1; bit <= ranges.size(); bit *= 2)
            for (const std::string& place :
                 missedWithout([&](std::size_t each) { return (each & bit) != 0; }))
                rangeOf[place] |= bit;
        for (const auto& [place, number] : rangeOf)
            if (number <= ranges.size() && changes.contains(place))
                ranges[number - 1]->settings.push_back(changes.at(place));
    }
}

void Planner::NameSettingsOfSlot(const Section& section, const WritePlan& plan,
                                 const std::vector<PlannedRange*>& ranges, const Changes& changes) {
    CopiedKeyboard copy(plan.before);
    Session session(copy);
    session.Open();
    const PlacedArea area = session.Areas(*m_scratch.Find(section.Info().key)).front();
    for (const KeyboardContent* content : {&plan.before, &plan.after}) {
        const std::string bytes = content->Bytes(area.address, area.size);
        for (PlannedRange* range : ranges)
            for (const std::string& place :
                 section.PlacesIn(range->address - area.address, range->Size(), bytes))
                if (const auto change = changes.find(place);
                    change != changes.end() &&
                    std::none_of(range->settings.begin(), range->settings.end(),
                                 [&](const Difference& known) { return known.place == place; }))
                    range->settings.push_back(change->second);
    }
}

std::vector<Difference> Planner::Compare(const KeyboardContent& from, const KeyboardContent& to,
                                         const std::string& section) {
    return Compare(Decode(from, {section}), to, {section});
}

std::vector<Difference> Planner::Compare(const Decoded& from, const KeyboardContent& to,
                                         const Keys& keys) {
    const Decoded now = Decode(to, keys);
    std::vector<Difference> differences;
    for (std::size_t i = 0; i < now.sections.size(); ++i) {
        Section* section = now.sections[i];
        const auto known = std::find(from.sections.begin(), from.sections.end(), section);
        if (known == from.sections.end())
            continue;
        const Snapshot& before =
            from.settings[static_cast<std::size_t>(known - from.sections.begin())];
        std::set<std::string> places;
        for (const auto& [place, values] : before.To(now.settings[i]))
            places.insert(place);
        if (places.empty())
            continue;
        const auto after = m_scratch.List(*section, places, Listed::Usual);
        before.Restore(*section);
        const auto changed =
            host::Compare(m_scratch.List(*section, places, Listed::Usual), after, Sides::Keyboards);
        differences.insert(differences.end(), changed.begin(), changed.end());
    }
    using Kind = SettingValue::Kind;
    const auto addDamaged = [&](const std::vector<Fault>& damaged, Kind then, Kind after) {
        for (const Fault& fault : damaged)
            differences.push_back({fault.place,
                                   NameOf(m_scratch.Find(fault.place.substr(1))->Info()),
                                   {then},
                                   {after}});
    };
    addDamaged(from.damaged, Kind::Damaged, now.damaged.empty() ? Kind::Sound : Kind::Damaged);
    if (from.damaged.empty())
        addDamaged(now.damaged, Kind::Sound, Kind::Damaged);
    return differences;
}

ConfigurationDocument Planner::Document(const KeyboardContent& content) {
    CopiedKeyboard copy(content);
    Session session(copy);
    session.Open();
    auto sections = session.Present(m_scratch);
    (void)session.Upload(sections);
    return m_scratch.Write(sections, session.Keyboard());
}

} // namespace qx::host
