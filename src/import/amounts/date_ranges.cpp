#include "import/amounts/date_ranges.h"

#include "support/date.h"

namespace krnqb {
namespace {

std::string FirstDayOf(const YearMonth& month) {
  return DateText(month.year, month.month, 1);
}

std::string LastDayOf(const YearMonth& month) {
  return DateText(month.year, month.month, DaysInMonth(month));
}

}  // namespace

DateRange FiscalYearRange(const TwelveMonths& months) {
  return {FirstDayOf(months.First()), LastDayOf(months.Last())};
}

DateRange MonthRange(const YearMonth& month) {
  return {FirstDayOf(month), LastDayOf(month)};
}

}  // namespace krnqb
