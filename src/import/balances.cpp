#include "import/balances.h"

namespace krnqb {

// Amounts are not imported yet: both passes change nothing.

void ImportExpenseBalances(ImportContext& /*context*/, std::int16_t /*startMonth*/,
                           std::int16_t /*startYear*/) {}

void ImportIncomeBalances(ImportContext& /*context*/, std::int16_t /*startMonth*/,
                          std::int16_t /*startYear*/) {}

}  // namespace krnqb
