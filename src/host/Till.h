// Till: the user's name for one of many keyboards. It is stored in records, so that a keyboard
// without an identifier can be recognised.
#pragma once

#include <set>
#include <string>

namespace qx::host {

struct Till {
    std::string unit;  // its name in a job; empty if unknown
    std::string place; // its connection in the job; empty if unknown

    // The unit, if known.
    [[nodiscard]] std::set<std::string> Units() const {
        return unit.empty() ? std::set<std::string>() : std::set<std::string>{unit};
    }
};

} // namespace qx::host
