// Stretches: a set of addresses, kept as stretches that neither touch nor overlap.
#pragma once

#include "qxcontrols/common/Types.h"

#include <map>
#include <vector>

namespace qx::host {

struct Stretch {
    Long address;
    Long size; // bytes, above 0

    [[nodiscard]] Long End() const { return address + size; }
    bool operator==(const Stretch&) const = default;
};

class Stretches {
public:
    // Adds the bytes from `address` on; what reaches past the largest address is left out.
    void Add(Long address, Long size);
    void Clear() { m_ends.clear(); }

    [[nodiscard]] bool IsEmpty() const { return m_ends.empty(); }
    // Whether all these bytes, at least one, are in the set.
    [[nodiscard]] bool Contains(Long address, Long size) const;
    [[nodiscard]] std::vector<Stretch> List() const; // by rising address
    // What is in this set and not in the other.
    [[nodiscard]] std::vector<Stretch> Without(const Stretches& other) const;

private:
    std::map<Long, Long> m_ends; // from the start of each stretch to its end
};

} // namespace qx::host
