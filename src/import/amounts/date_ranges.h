#pragma once

#include <cstdint>
#include <string>

namespace krnqb {

/// The first and the last day of a period, as year-month-day.
struct DateRange {
  std::string fromDate;
  std::string toDate;
};

/// The twelve months that begin with a month (1 to 12) of a year. Error 13 for a month outside 1 to 12 or a
/// last year outside 100 to 9999, error 6 when that year leaves 16 bits.
DateRange FiscalYearRange(std::int16_t month, std::int16_t year);

/// One month (1 to 12) of a year; errors as for `DaysInMonth`.
DateRange MonthRange(std::int16_t month, std::int16_t year);

}  // namespace krnqb
