#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/outside_world.h"

namespace krnqb {

/// Returns the number of days in a month. Throws Error 13 unless `month` is 1 to 12 and `year` 100 to 9999.
std::int16_t DaysInCalendarMonth(std::int16_t month, std::int16_t year);

/// Returns the number (1 to 12) of a full English month name, or nothing for any other text.
/// Case-insensitive; ignores leading and trailing white space.
std::optional<std::int16_t> MonthNumber(std::string_view name);

/// Returns the English name of a month. Throws Error 9 unless `month` is 1 to 12.
std::string_view EnglishMonthName(std::int16_t month);

/// Returns a date as year-month-day, with month and day in two digits and the year unpadded.
std::string DateText(std::int16_t year, std::int16_t month, std::int16_t day);

/// Returns the number of days since 30 December 1899, rounded to the nearest day; noon rounds to the even
/// day.
std::int32_t RoundedDateSerial(const LocalDateTime& moment);

/// Converts a value to 16 bits. Throws Error 6 if it is outside -32768 to 32767.
std::int16_t CheckedInteger(std::int32_t value);

}  // namespace krnqb
