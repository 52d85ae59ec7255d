#pragma once

#include <string>

#include "support/year_month.h"

namespace krnqb {

/// The first and last day of a period, each as "year-month-day".
struct DateRange {
  std::string fromDate;
  std::string toDate;
};

/// Returns the range from the first day of the first month to the last day of the last. Throws Error 13 if
/// the last month is outside the calendar (see `DaysInMonth`), Error 6 if it leaves 16 bits.
DateRange FiscalYearRange(const TwelveMonths& months);

/// Returns the range of one month. Throws the errors of `DaysInMonth`.
DateRange MonthRange(const YearMonth& month);

}  // namespace krnqb
