// Till: which of many keyboards one is, as its user calls it. Records tell it, so that a keyboard
// without an identifier is found again.
#pragma once

#include <set>
#include <string>

namespace qx::host {

struct Till {
    std::string unit;  // its name in a job; empty where not known
    std::string place; // how the job reaches it; empty where not known

    // The unit, if it is known.
    [[nodiscard]] std::set<std::string> Units() const {
        return unit.empty() ? std::set<std::string>() : std::set<std::string>{unit};
    }
};

} // namespace qx::host
