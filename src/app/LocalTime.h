// LocalTime: dates and times as the language of the window writes them, in the user's time zone.
#pragma once

#include <QString>

#include <string>

class QDate;
class QDateTime;

namespace qx::app {

// The short form, with all digits of the year: "31.01.2026".
[[nodiscard]] QString LocalDate(const QDate& date);
// To the second.
[[nodiscard]] QString LocalTime(const QDateTime& time);
// For "20260131T090507.123Z" or "2026-01-31T09:05:07.123Z"; other texts are returned unchanged.
[[nodiscard]] QString LocalTime(const std::string& time);

} // namespace qx::app
