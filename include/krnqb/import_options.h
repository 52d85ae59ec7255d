#pragma once

#include <cstdint>

#include "krnqb/enumerations.h"

namespace krnqb {

/// The first month of the plan and of the import. 0 means not set.
struct PeriodFields {
  std::int16_t krnStartingMonth = 0;  ///< the plan's, 1 to 12
  std::int16_t krnStartingYear = 0;   ///< the plan's
  std::int16_t startingMonth = 0;     ///< the import's, 1 to 12
  std::int16_t startingYear = 0;      ///< the import's
};

/// The options of an import. The initial values are those of a new component.
struct ImportOptions {
  bool includeExpenseAccounts = false;  ///< whether expense accounts become rows
  bool includeIncomeAccounts = false;   ///< includes the cost-of-goods accounts in an import of balances
  bool includePastPerformance = false;  ///< requires an import of balances; for QBKRN_ALD and QBKRN_COR
  std::int16_t growthRateCogs = 0;      ///< annual growth in whole percent
  std::int16_t growthRateIncome = 0;    ///< annual growth in whole percent
  std::int16_t growthRateExpenses = 0;  ///< annual growth in whole percent
  QBKRN_BalancesImport balancesImport = BalImport_None;  ///< which amounts are written
  QBKRNproduct krnProduct = QBKRN_ALD;                   ///< the edition that owns the plan
  PeriodFields period;                                   ///< where the plan and the import begin
};

}  // namespace krnqb
