#include "plan/period.h"

#include "support/date.h"

namespace krnqb {

std::int16_t KRNStartingMonth(PeriodFields& period) noexcept {
  if (period.krnStartingMonth == 0) period.krnStartingMonth = period.startingMonth;
  return period.krnStartingMonth;
}

std::int16_t KRNStartingYear(PeriodFields& period) noexcept {
  if (period.krnStartingYear == 0) period.krnStartingYear = period.startingYear;
  return period.krnStartingYear;
}

std::int16_t StartingMonth(PeriodFields& period) noexcept {
  if (period.startingMonth == 0) period.startingMonth = period.krnStartingMonth;
  return period.startingMonth;
}

std::int16_t StartingYear(PeriodFields& period) {
  if (period.startingYear == 0) period.startingYear = CheckedInteger(period.krnStartingYear - 1);
  return period.startingYear;
}

}  // namespace krnqb
