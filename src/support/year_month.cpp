#include "support/year_month.h"

#include "krnqb/error.h"
#include "support/date.h"

namespace krnqb {

YearMonth NextMonth(const YearMonth& month) {
  if (month.month == 12) return {.year = CheckedInteger(month.year + 1), .month = 1};
  return {.year = month.year, .month = CheckedInteger(month.month + 1)};
}

std::int16_t DaysInMonth(const YearMonth& month) {
  constexpr YearMonth lastOfTheCalendar{.year = 9999, .month = 12};
  if (month == lastOfTheCalendar) throw Error(error_number::typeMismatch);
  return DaysInCalendarMonth(month.month, month.year);
}

YearMonth TwelveMonths::Month(std::int16_t number) const {
  YearMonth month = first_;
  for (std::int16_t step = 1; step < number; ++step) month = NextMonth(month);
  return month;
}

YearMonth TwelveMonths::Last() const {
  const std::int16_t eleventhAfter = CheckedInteger(first_.month + 11);
  return {.year = first_.month > 1 ? CheckedInteger(first_.year + 1) : first_.year,
          .month = eleventhAfter > 12 ? CheckedInteger(eleventhAfter - 12) : eleventhAfter};
}

}  // namespace krnqb
