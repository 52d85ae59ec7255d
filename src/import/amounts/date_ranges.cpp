#include "import/amounts/date_ranges.h"

#include "support/date.h"

namespace krnqb {

DateRange FiscalYearRange(std::int16_t month, std::int16_t year) {
  std::int16_t endMonth = CheckedInteger(month + 11);
  if (endMonth > 12) endMonth = CheckedInteger(endMonth - 12);
  const std::int16_t endYear = month > 1 ? CheckedInteger(year + 1) : year;
  return {DateText(year, month, 1), DateText(endYear, endMonth, DaysInMonth(endMonth, endYear))};
}

DateRange MonthRange(std::int16_t month, std::int16_t year) {
  return {DateText(year, month, 1), DateText(year, month, DaysInMonth(month, year))};
}

}  // namespace krnqb
