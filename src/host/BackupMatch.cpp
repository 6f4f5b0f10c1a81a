#include "host/BackupMatch.h"

#include "host/Refusal.h"

#include <algorithm>
#include <set>
#include <vector>

namespace qx::host {

namespace {

using Units = std::set<std::string>;

Error OfOther(Cause cause, const Units& names, const Units& others = {}) {
    return Refusal(
        cause, {.names = {names.begin(), names.end()}, .others = {others.begin(), others.end()}});
}

} // namespace

void RequireSameKind(const Backup& backup, const KeyboardContent& now) {
    const KeyboardIdentity& saved = backup.content.identity;
    if (!saved.IsLike(now.identity))
        throw Refusal(Cause::BackupOfOtherModules,
                      {.name = saved.Name(), .other = now.identity.Name()});
}

std::optional<Error> WhyOfOtherKeyboard(const Backup& backup, const KeyboardContent& now,
                                        const std::string& sOrigin, const Receipts& receipts,
                                        const InterruptedWrites& interrupted) {
    const auto isReachedSo = [&](const KeyboardIdentity& keyboard, const std::string& origin) {
        return backup.content.identity.guid == keyboard.guid && backup.origin == origin;
    };
    const auto partly = InterruptedWrites::Partly(interrupted.OnRecord(now));
    if (!isReachedSo(now.identity, sOrigin) &&
        std::none_of(partly.begin(), partly.end(), [&](const JournalEntry& entry) {
            return isReachedSo(entry.keyboard, entry.origin);
        }))
        return OfOther(Cause::BackupReachedOtherwise, backup.till.Units());
    const Units saved =
        backup.till.unit.empty() ? receipts.UnitsOf(backup.content) : backup.till.Units();
    if (saved.empty() || now.HoldsSame(backup.content))
        return {};
    Units units;
    for (const JournalEntry& entry : partly)
        units.merge(entry.till.unit.empty()
                        ? receipts.UnitsOf(entry.RolledBack(interrupted.AsReadFor(entry, now)))
                        : entry.till.Units());
    if (partly.empty())
        units = receipts.UnitsOf(now);
    if (units.empty() && now.identity.guid.empty())
        return OfOther(Cause::BackupOfUnit, saved);
    if (units.empty() || (units == saved && units.size() == 1))
        return {};
    return OfOther(Cause::BackupOfOtherUnit, saved, units);
}

} // namespace qx::host
