#include "plan/months.h"

namespace krnqb {

void ActivityScan::Add(const cSubtotals& record) {
  for (auto month = static_cast<std::int16_t>(best_ + 1); month <= cSubtotals::monthCount; ++month) {
    if (record.SubTotal(month) != 0) best_ = month;
  }
}

std::int16_t MonthsOfActivity(const SubtotalCollection* subtotals) {
  ActivityScan scan;
  if (subtotals == nullptr) return 0;
  for (const cSubtotals& record : *subtotals) scan.Add(record);
  return scan.HighestMonth();
}

}  // namespace krnqb
