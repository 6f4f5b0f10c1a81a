// Advance: decides from the percentages that a driver posts whether its transfer makes progress.
//
// Drivers count from 0 to 100 once per transfer, or once per stretch. Values that are not
// percentages, repeated values, and more restarts than there are stretches do not count as
// progress; so a transfer that posts forever makes progress only a limited number of times.
#pragma once

#include <cstdint>

namespace qx::driverhost {

class Advance {
public:
    // For a transfer of this many stretches.
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
    int m_falls; // restarts left
    std::int32_t m_percent = 0;
};

} // namespace qx::driverhost
