// Stretches: a set of addresses, stored as stretches that are not adjacent and do not overlap.
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
    // Adds the bytes from `address` on; bytes beyond the largest address are ignored.
    void Add(Long address, Long size);
    void Clear() { m_ends.clear(); }

    [[nodiscard]] bool IsEmpty() const { return m_ends.empty(); }
    // Whether all these bytes (at least one) are in the set.
    [[nodiscard]] bool Contains(Long address, Long size) const;
    [[nodiscard]] std::vector<Stretch> List() const; // sorted by address
    // The stretches in this set but not in the other.
    [[nodiscard]] std::vector<Stretch> Without(const Stretches& other) const;

private:
    std::map<Long, Long> m_ends; // maps each stretch's start to its end
};

} // namespace qx::host
