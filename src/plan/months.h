#pragma once

#include <cstdint>

#include "krnqb/subtotals.h"
#include "plan/period.h"

namespace krnqb {

/// The highest month, 1 to 12, in which a record holds an amount other than 0, over the records added so far.
class ActivityScan {
 public:
  void Add(const cSubtotals& record);
  std::int16_t HighestMonth() const noexcept { return best_; }

 private:
  std::int16_t best_ = 0;
};

/// The highest month with activity over a collection; 0 for none and for an empty one.
std::int16_t MonthsOfActivity(const SubtotalCollection* subtotals);

/// Steps through the months of a period. With `call` 1 it sets month and year to the start, where 0 means the
/// plan's own (`KRNStartingMonth`, `KRNStartingYear`); with any other it moves one month on, from December
/// into January of the next year. Error 6 when a value leaves 16 bits.
void StepMonth(std::int16_t call, std::int16_t& month, std::int16_t& year, std::int16_t startMonth,
               std::int16_t startYear, PeriodFields& period);

}  // namespace krnqb
