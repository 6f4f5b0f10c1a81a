// LocalTime: a record's time in the user's time zone.
#pragma once

#include <QString>

#include <string>

namespace qx::app {

// For "20260131T090507.123Z" or "2026-01-31T09:05:07.123Z"; other texts are returned unchanged.
[[nodiscard]] QString LocalTime(const std::string& time);

} // namespace qx::app
