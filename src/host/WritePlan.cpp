#include "host/WritePlan.h"

#include "host/Session.h"

#include <algorithm>
#include <set>

namespace qx::host {

namespace {

std::vector<std::string> SectionsOf(const std::vector<PlannedRange>& ranges) {
    std::vector<std::string> sections;
    for (const PlannedRange& range : ranges)
        if (!range.section.empty() &&
            std::find(sections.begin(), sections.end(), range.section) == sections.end())
            sections.push_back(range.section);
    return sections;
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

WritePlan Planner::ForSettings(const std::vector<Section*>& sections) {
    CopiedKeyboard copy(m_content);
    Session session(copy);
    session.Open();
    session.Download(sections);
    WritePlan plan{m_content, copy.Content(), {}, {}, copy.LastSaved(), {}};
    Finish(plan);
    return plan;
}

WritePlan Planner::ForContent(const KeyboardContent& wanted) {
    WritePlan plan{m_content, wanted, {}, {}, {}, {}};
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
    for (const std::string& area : unsaved)
        plan.notRestored.push_back(area +
                                   " is not in the backup, or not all of it, and stays as it is");
    Long saved = 0;
    for (const ContentPiece& piece : backup.pieces)
        if (piece.module != MODULE_GUID || withGuid)
            saved += static_cast<Long>(piece.bytes.size());
    if (restored < saved)
        plan.notRestored.push_back(std::to_string(saved - restored) +
                                   " bytes of the backup lie where this program knows no area");
    return plan;
}

// A setting belongs to a range when it would not become what it is to be without that range.
void Planner::Finish(WritePlan& plan) {
    for (ByteRange& range : Differences(plan.before, plan.after, kRequestCost))
        plan.ranges.push_back({std::move(range), {}});
    for (const std::string& section : SectionsOf(plan.ranges)) {
        const std::vector<Setting> after = Settings(plan.after, section);
        const auto changed =
            host::Compare(Settings(plan.before, section), after, m_scratch.WordsInUse());
        plan.settings.insert(plan.settings.end(), changed.begin(), changed.end());
        for (PlannedRange& range : plan.ranges) {
            if (range.section != section || changed.empty())
                continue;
            KeyboardContent without = plan.after;
            without.Overwrite(range.address, range.from);
            std::set<std::string> missed;
            for (const Difference& difference :
                 host::Compare(Settings(without, section), after, m_scratch.WordsInUse()))
                missed.insert(difference.place);
            for (const Difference& difference : changed)
                if (missed.contains(difference.place))
                    range.settings.push_back(ToText(difference));
        }
    }
}

std::vector<Difference> Planner::Compare(const KeyboardContent& from, const KeyboardContent& to,
                                         const std::string& section) {
    return host::Compare(Settings(from, section), Settings(to, section), m_scratch.WordsInUse());
}

std::vector<Setting> Planner::Settings(const KeyboardContent& content, const std::string& section) {
    CopiedKeyboard copy(content);
    Session session(copy);
    session.Open();
    auto sections = session.SectionsIn(m_scratch);
    std::erase_if(sections, [&](const Section* each) { return each->Info().key != section; });
    session.Upload(sections);
    return m_scratch.List(sections);
}

ConfigurationDocument Planner::Document(const KeyboardContent& content) {
    CopiedKeyboard copy(content);
    Session session(copy);
    session.Open();
    const auto sections = session.SectionsIn(m_scratch);
    session.Upload(sections);
    return m_scratch.Write(sections, session.Keyboard());
}

} // namespace qx::host
