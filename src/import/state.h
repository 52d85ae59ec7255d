#pragma once

#include <cstdint>
#include <optional>

#include "import/lists/account_list.h"
#include "import/lists/item_list.h"
#include "krnqb/enumerations.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"
#include "plan/period.h"

namespace krnqb {

/// What the host chose for an import. It may change any of it between two events, so that every step reads it
/// anew.
struct ImportOptions {
  bool includeExpenseAccounts = false;
  bool includeIncomeAccounts = false;
  bool includePastPerformance = false;
  std::int16_t growthRateCogs = 0;      ///< annual growth in whole percent
  std::int16_t growthRateIncome = 0;    ///< annual growth in whole percent
  std::int16_t growthRateExpenses = 0;  ///< annual growth in whole percent
  QBKRN_BalancesImport balancesImport = BalImport_None;
  QBKRNproduct krnProduct = QBKRN_ALD;
  PeriodFields period;
};

/// What an import has read. Nothing of it is reset between imports.
struct ImportState {
  ImportOptions options;
  XmlElement selectedExpenses;
  AccountList expenseAccounts;
  AccountList incomeAccounts;
  AccountList costAccounts;
  ItemList itemListDocument;
  std::optional<SubtotalCollection> expenseSubtotals;
  std::optional<SubtotalCollection> incomeSubtotals;
  std::optional<SubtotalCollection> costSubtotals;
  /// Account ids by customer id, a comma, and the amount's text.
  std::optional<KeyedCollection<std::string>> billableExpenses;
  std::optional<SubtotalCollection> pastPerformance;
};

}  // namespace krnqb
