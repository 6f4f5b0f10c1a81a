// Snapshot: the settings of a section just as its control holds them, one by one.
//
// Unlike a document it also holds what no keyboard and no document keeps, such as a description
// that is too long, and bringing it back checks nothing. It is made and compared in well under a
// millisecond.
#pragma once

#include "host/Section.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace qx::host {

class Snapshot {
public:
    // From the place of a setting, as in Setting, to its value, of a form of its own.
    using Values = std::map<std::string, std::string>;
    // The same with two values; an element of a list that one side lacks has empty ones there.
    struct TwoValues {
        std::string before;
        std::string after;
    };
    using Change = std::map<std::string, TwoValues>;

    [[nodiscard]] static Snapshot Of(Section& section);
    // What is different in the later one.
    [[nodiscard]] Change To(const Snapshot& later) const;

    // Gives the section these settings, and has its control show them; all others stay.
    static void Put(Section& section, const Values& values);
    // The whole section as it was.
    void Restore(Section& section) const;

private:
    Values m_values;
};

// The ids of the elements of the list at `listPlace` that have settings among these places.
[[nodiscard]] std::set<FieldList::Id> IdsIn(const std::set<std::string>& places,
                                            const std::string& listPlace);

} // namespace qx::host
