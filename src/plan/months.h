#pragma once

#include <cstdint>

#include "krnqb/subtotals.h"

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

}  // namespace krnqb
