// The writer's way with backups: whether one is of the keyboard that is plugged in.

#include "host/Writer.h"

#include <algorithm>

namespace qx::host {

namespace {

constexpr const char* kNothingWritten = "; nothing was written";

// "till 1 or till 2"
std::string Alternatives(const std::set<std::string>& units) {
    std::string text;
    for (const std::string& unit : units)
        text += (text.empty() ? "" : " or ") + unit;
    return text;
}

} // namespace

WritePlan Writer::PlanRestore(const Backup& backup, bool otherKeyboard) {
    const KeyboardContent now = Read();
    const KeyboardIdentity& saved = backup.content.identity;
    if (!saved.IsLike(now.identity))
        throw Error(ErrorKind::KeyboardChanged, "the backup is of a " + saved.Name() +
                                                    " with other modules than this " +
                                                    now.identity.Name() + kNothingWritten);
    const std::string whyOther = WhyOfOtherKeyboard(backup, now);
    if (!whyOther.empty() && !otherKeyboard)
        throw Error(ErrorKind::KeyboardChanged, whyOther + kNothingWritten);
    const bool isOfThis = whyOther.empty();
    WritePlan plan = Planner(now, *m_scratch).ForBackup(backup.content, isOfThis);
    plan.isOfOtherKeyboard = !isOfThis;
    ProveNothingToDo(plan);
    return plan;
}

// Why the backup seems to be of another keyboard; empty when it is of this one. A keyboard that
// holds a part of an interrupted write is the one of the backup that was made before that write.
std::string Writer::WhyOfOtherKeyboard(const Backup& backup, const KeyboardContent& now) {
    const auto isReachedSo = [&](const KeyboardIdentity& keyboard, const std::string& origin) {
        return backup.content.identity.guid == keyboard.guid && backup.origin == origin;
    };
    const std::vector<JournalEntry> partly = PartlyIn(now);
    if (!isReachedSo(now.identity, m_options.origin) &&
        std::none_of(partly.begin(), partly.end(), [&](const JournalEntry& entry) {
            return isReachedSo(entry.keyboard, entry.origin);
        }))
        return "the backup is of another keyboard of this kind" +
               (backup.till.unit.empty() ? "" : " (" + backup.till.unit + ")") +
               ", or of one that was reached in another way";
    const std::set<std::string> saved = backup.till.unit.empty()
                                            ? m_records.receipts.UnitsOf(backup.content)
                                            : std::set<std::string>{backup.till.unit};
    if (saved.empty() || now.HoldsSame(backup.content))
        return {};
    std::set<std::string> units;
    for (const JournalEntry& entry : partly)
        units.merge(entry.till.unit.empty()
                        ? m_records.receipts.UnitsOf(entry.RolledBack(AsReadFor(entry, now)))
                        : std::set<std::string>{entry.till.unit});
    if (partly.empty())
        units = m_records.receipts.UnitsOf(now);
    if (units.empty())
        return now.identity.guid.empty() ? "the backup is of " + Alternatives(saved) +
                                               ", and no record shows which unit this keyboard is"
                                         : "";
    return units == saved && units.size() == 1
               ? ""
               : "the backup is of " + Alternatives(saved) +
                     ", and by the records this keyboard is " + Alternatives(units);
}

} // namespace qx::host
