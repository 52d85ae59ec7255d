#pragma once

#include <cstdint>

#include "krnqb/subtotals.h"

namespace krnqb {

/// Finds the highest month, 1 to 12, in which any of the added records has an amount other than 0.
class ActivityScan {
 public:
  void Add(const cSubtotals& record);
  /// Returns the highest month so far; 0 if every amount of the months is 0.
  std::int16_t HighestMonth() const noexcept { return best_; }

 private:
  std::int16_t best_ = 0;
};

/// Returns the highest month, 1 to 12, in which a record of the collection has an amount other than 0; 0 if
/// there is no such month or the collection is null.
std::int16_t MonthsOfActivity(const SubtotalCollection* subtotals);

}  // namespace krnqb
