// Advance: whether a transfer gets on, from the percentages that its driver posts.
//
// Drivers count from 0 to 100 once for a transfer, or anew for each stretch that it moves. What is
// not a percentage, the same one again, and counting anew more often than there are stretches are
// no advance; so a transfer that posts for ever advances only so often.
#pragma once

#include <cstdint>

namespace qx::driverhost {

class Advance {
public:
    // Of a transfer of that many stretches.
    explicit Advance(int stretches) : m_falls(stretches) {}

    [[nodiscard]] bool IsMadeBy(std::int32_t percent) {
        if (percent < 0 || percent > 100 || percent == m_percent)
            return false;
        if (percent < m_percent && m_falls-- <= 0) {
            m_falls = 0;
            return false;
        }
        m_percent = percent;
        return true;
    }

private:
    int m_falls; // that are left
    std::int32_t m_percent = 0;
};

} // namespace qx::driverhost
