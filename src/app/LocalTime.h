// LocalTime: the time of a record, as the user's own clock shows it.
#pragma once

#include <QString>

#include <string>

namespace qx::app {

// Of "20260131T090507.123Z" or "2026-01-31T09:05:07.123Z"; any other text stays as it is.
[[nodiscard]] QString LocalTime(const std::string& time);

} // namespace qx::app
