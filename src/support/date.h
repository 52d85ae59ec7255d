#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/outside_world.h"

namespace krnqb {

/// Returns the number of days of a month. Throws Error 13 if the month is outside 1 to 12 or the year outside
/// 100 to 9999.
std::int16_t DaysInCalendarMonth(std::int16_t month, std::int16_t year);

/// The number (1 to 12) of a full English month name in any letter case, blanks around it ignored; nothing
/// else is one.
std::optional<std::int16_t> MonthNumber(std::string_view name);

/// The English name of month 1 to 12; error 9 outside.
std::string_view EnglishMonthName(std::int16_t month);

/// A date as year-month-day: the year in plain decimal, month and day in two digits.
std::string DateText(std::int16_t year, std::int16_t month, std::int16_t day);

/// The moment as whole days since 30 December 1899, the time of day rounded, halves to the even day.
std::int32_t RoundedDateSerial(const LocalDateTime& moment);

/// The range check of 16-bit arithmetic: error 6 outside -32768 to 32767.
std::int16_t CheckedInteger(std::int32_t value);

}  // namespace krnqb
