#include "plan/period.h"

#include "support/date.h"

namespace krnqb {

std::int16_t SettleKRNStartingMonth(PeriodFields& period) noexcept {
  if (period.krnStartingMonth == 0) period.krnStartingMonth = period.startingMonth;
  return period.krnStartingMonth;
}

std::int16_t SettleKRNStartingYear(PeriodFields& period) noexcept {
  if (period.krnStartingYear == 0) period.krnStartingYear = period.startingYear;
  return period.krnStartingYear;
}

std::int16_t SettleStartingMonth(PeriodFields& period) noexcept {
  if (period.startingMonth == 0) period.startingMonth = period.krnStartingMonth;
  return period.startingMonth;
}

std::int16_t SettleStartingYear(PeriodFields& period) {
  if (period.startingYear == 0) period.startingYear = CheckedInteger(period.krnStartingYear - 1);
  return period.startingYear;
}

TwelveMonths SettleTwelveMonths(const YearMonth& start, PeriodFields& period) noexcept {
  YearMonth first = start;
  if (first.month == 0) first.month = SettleKRNStartingMonth(period);
  if (first.year == 0) first.year = SettleKRNStartingYear(period);
  return TwelveMonths(first);
}

}  // namespace krnqb
