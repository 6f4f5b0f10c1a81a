// The writer's way with backups: whether one is of the keyboard that is plugged in.

#include "host/Writer.h"

#include <algorithm>

namespace qx::host {

WritePlan Writer::PlanRestore(const Backup& backup, bool otherKeyboard) {
    const KeyboardContent now = Read();
    const KeyboardIdentity& saved = backup.content.identity;
    if (!saved.IsLike(now.identity))
        throw Error(
            Cause::BackupOfOtherModules,
            {.name = saved.Name(), .other = now.identity.Name(), .holds = Holds::NotTouched});
    const auto other = WhyOfOtherKeyboard(backup, now);
    if (other && !otherKeyboard)
        throw Error(*other);
    WritePlan plan = Planner(now, *m_scratch).ForBackup(backup.content, !other);
    plan.otherKeyboard = other;
    ProveNothingToDo(plan);
    return plan;
}

// Why the backup seems to be of another keyboard, if it does. A keyboard that holds a part of an
// interrupted write is the one of the backup that was made before that write.
std::optional<Error> Writer::WhyOfOtherKeyboard(const Backup& backup, const KeyboardContent& now) {
    using Units = std::set<std::string>;
    const auto refusal = [](Cause cause, const Units& names, const Units& others = {}) {
        return Error(cause, {.names = {names.begin(), names.end()},
                             .others = {others.begin(), others.end()},
                             .holds = Holds::NotTouched});
    };
    const auto isReachedSo = [&](const KeyboardIdentity& keyboard, const std::string& origin) {
        return backup.content.identity.guid == keyboard.guid && backup.origin == origin;
    };
    const std::vector<JournalEntry> partly = PartlyIn(now);
    if (!isReachedSo(now.identity, m_options.origin) &&
        std::none_of(partly.begin(), partly.end(), [&](const JournalEntry& entry) {
            return isReachedSo(entry.keyboard, entry.origin);
        }))
        return refusal(Cause::BackupReachedOtherwise, backup.till.Units());
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
        return refusal(Cause::BackupOfUnit, saved);
    if (units.empty() || (units == saved && units.size() == 1))
        return {};
    return refusal(Cause::BackupOfOtherUnit, saved, units);
}

} // namespace qx::host
