#include "host/Stretches.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>

namespace qx::host {

namespace {

// The end of a stretch, limited to the range of addresses.
Long EndOf(Long address, Long size) {
    const std::int64_t end = std::int64_t{address} + size;
    return static_cast<Long>(std::min<std::int64_t>(end, std::numeric_limits<Long>::max()));
}

} // namespace

void Stretches::Add(Long address, Long size) {
    Long start = address;
    Long end = EndOf(address, size);
    if (end <= start)
        return;
    auto next = m_ends.upper_bound(start);
    if (next != m_ends.begin() && std::prev(next)->second >= start)
        --next; // begins earlier and is adjacent
    while (next != m_ends.end() && next->first <= end) {
        start = std::min(start, next->first);
        end = std::max(end, next->second);
        next = m_ends.erase(next);
    }
    m_ends.emplace(start, end);
}

bool Stretches::Contains(Long address, Long size) const {
    const Long end = EndOf(address, size);
    const auto next = m_ends.upper_bound(address);
    return end > address && next != m_ends.begin() && std::prev(next)->second >= end;
}

std::vector<Stretch> Stretches::List() const {
    std::vector<Stretch> list;
    for (const auto& [start, end] : m_ends)
        list.push_back({start, end - start});
    return list;
}

std::vector<Stretch> Stretches::Without(const Stretches& other) const {
    std::vector<Stretch> rest;
    for (const auto& [start, end] : m_ends) {
        Long from = start;
        auto cut = other.m_ends.upper_bound(start);
        if (cut != other.m_ends.begin())
            --cut;
        for (; cut != other.m_ends.end() && cut->first < end; ++cut) {
            if (cut->first > from)
                rest.push_back({from, cut->first - from});
            from = std::max(from, cut->second);
        }
        if (from < end)
            rest.push_back({from, end - from});
    }
    return rest;
}

} // namespace qx::host
