// Members: a JSON object that is read strictly, member by member; what is wrong in it is noted with
// its place, and reading goes on.
#pragma once

#include "host/Error.h"
#include "host/Json.h"
#include "host/Variables.h"

#include <set>
#include <string>
#include <vector>

namespace qx::batch {

class Members {
public:
    // The object, or another value, which is a fault. All three outlive this.
    Members(const host::Json& value, std::string place, std::vector<host::Fault>& faults);

    // Null where there is none.
    [[nodiscard]] const host::Json* Find(const std::string& key);
    // A text that is not empty; the empty text where there is none.
    [[nodiscard]] std::string Text(const std::string& key, bool fRequired = false);
    // The member "variables".
    [[nodiscard]] host::Variables::Values Variables();
    // Members that were not asked for are faults.
    void RefuseOthers();

    [[nodiscard]] std::string Place(const std::string& key) const;
    void AddFault(const std::string& key, const std::string& message);

private:
    const host::Json& m_value;
    std::string m_place;
    std::vector<host::Fault>& m_faults;
    std::set<std::string> m_asked;
};

} // namespace qx::batch
