#include "plan/months.h"

#include "support/date.h"

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

void StepMonth(std::int16_t call, std::int16_t& month, std::int16_t& year, std::int16_t startMonth,
               std::int16_t startYear, PeriodFields& period) {
  if (call == 1) {
    month = startMonth != 0 ? startMonth : KRNStartingMonth(period);
    year = startYear != 0 ? startYear : KRNStartingYear(period);
  } else if (month == 12) {
    month = 1;
    year = CheckedInteger(year + 1);
  } else {
    month = CheckedInteger(month + 1);
  }
}

}  // namespace krnqb
