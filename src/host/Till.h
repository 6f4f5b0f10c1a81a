// Till: which of many keyboards one is, as its user calls it. Records tell it, so that a keyboard
// without an identifier is found again.
#pragma once

#include <string>

namespace qx::host {

struct Till {
    std::string unit;  // its name in a job; empty where not known
    std::string place; // how the job reaches it; empty where not known
};

} // namespace qx::host
