// Snapshot: the settings of a section exactly as its control holds them, one by one.
//
// Unlike a document it also includes settings that no keyboard and no document stores, such as a
// description that is too long, and restoring it checks nothing. It is created and compared in well
// under a millisecond.
#pragma once

#include "host/Section.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

class Snapshot {
public:
    // Maps the place of a setting, as in Setting, to its value in an internal form.
    using Values = std::map<std::string, std::string>;
    // The same with two values; an element that one side does not have has empty values there.
    struct TwoValues {
        std::string before;
        std::string after;
    };
    using Change = std::map<std::string, TwoValues>;

    [[nodiscard]] static Snapshot Of(Section& section);
    // The differences in the later snapshot.
    [[nodiscard]] Change To(const Snapshot& later) const;

    // Sets these settings in the section, and updates its control's display; all others stay
    // unchanged.
    static void Put(Section& section, const Values& values);
    // Restores the whole section.
    void Restore(Section& section) const;

private:
    Values m_values;
};

// The id of the list's element at this place, {3, 12} for "/layeredFuncKeys/keys[3][12]/sequence";
// empty outside of lists.
[[nodiscard]] FieldList::Id IdIn(std::string_view place);

// The ids of those elements of the list at `listPlace` that have settings among these places.
[[nodiscard]] std::set<FieldList::Id> IdsIn(const std::set<std::string>& places,
                                            const std::string& listPlace);

} // namespace qx::host
