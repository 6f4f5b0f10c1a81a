// The writer's way with backups: whether one is of the keyboard that is plugged in.

#include "host/Writer.h"

#include <algorithm>

namespace qx::host {

namespace {

constexpr const char* kNothingWritten = "; nothing was written";

} // namespace

WritePlan Writer::PlanRestore(const Backup& backup, bool otherKeyboard) {
    const KeyboardContent now = Read();
    const KeyboardIdentity& saved = backup.content.identity;
    if (!saved.IsLike(now.identity))
        throw Error(ErrorKind::KeyboardChanged, "the backup is of a " + saved.Name() +
                                                    " with other modules than this " +
                                                    now.identity.Name() + kNothingWritten);
    const auto other = WhyOfOtherKeyboard(backup, now);
    if (other && !otherKeyboard)
        throw Error(ErrorKind::KeyboardChanged, other->Text() + kNothingWritten);
    WritePlan plan = Planner(now, *m_scratch).ForBackup(backup.content, !other);
    plan.otherKeyboard = other;
    ProveNothingToDo(plan);
    return plan;
}

// Why the backup seems to be of another keyboard, if it does. A keyboard that holds a part of an
// interrupted write is the one of the backup that was made before that write.
std::optional<OtherKeyboard> Writer::WhyOfOtherKeyboard(const Backup& backup,
                                                        const KeyboardContent& now) {
    using Reason = OtherKeyboard::Reason;
    const auto isReachedSo = [&](const KeyboardIdentity& keyboard, const std::string& origin) {
        return backup.content.identity.guid == keyboard.guid && backup.origin == origin;
    };
    const std::vector<JournalEntry> partly = PartlyIn(now);
    if (!isReachedSo(now.identity, m_options.origin) &&
        std::none_of(partly.begin(), partly.end(), [&](const JournalEntry& entry) {
            return isReachedSo(entry.keyboard, entry.origin);
        }))
        return OtherKeyboard{Reason::ReachedOtherwise, backup.till.Units(), {}};
    const std::set<std::string> saved =
        backup.till.unit.empty() ? m_records.receipts.UnitsOf(backup.content) : backup.till.Units();
    if (saved.empty() || now.HoldsSame(backup.content))
        return {};
    std::set<std::string> units;
    for (const JournalEntry& entry : partly)
        units.merge(entry.till.unit.empty()
                        ? m_records.receipts.UnitsOf(entry.RolledBack(AsReadFor(entry, now)))
                        : entry.till.Units());
    if (partly.empty())
        units = m_records.receipts.UnitsOf(now);
    if (units.empty() && now.identity.guid.empty())
        return OtherKeyboard{Reason::UnitUnknown, saved, {}};
    if (units.empty() || (units == saved && units.size() == 1))
        return {};
    return OtherKeyboard{Reason::OtherUnit, saved, units};
}

} // namespace qx::host
