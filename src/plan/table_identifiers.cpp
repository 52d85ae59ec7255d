#include "plan/table_identifiers.h"

namespace krnqb {

std::vector<std::string_view> TablesAffected(QBKRNproduct product) {
  switch (product) {
    case QBKRN_BRI:
      return {table_id::contributionMarginSummary, table_id::plannedContributionMargin,
              table_id::plannedSales, table_id::actualSales};
    case QBKRN_ALD:
    case QBKRN_COR:
      return {table_id::plannedSales, table_id::actualSales, table_id::plannedIncomeRange,
              table_id::actualIncomeRange, table_id::pastPerformance};
    default:
      return {};
  }
}

}  // namespace krnqb
