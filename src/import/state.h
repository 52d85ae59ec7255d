#pragma once

#include <optional>

#include "import/lists/account_list.h"
#include "import/lists/item_list.h"
#include "krnqb/import_options.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// What an import has read. Nothing of it is reset between imports.
struct ImportState {
  /// A host may change any of them during an event, so every step reads them anew.
  ImportOptions options;
  XmlElement selectedExpenses;
  AccountList expenseAccounts;
  AccountList incomeAccounts;
  AccountList costAccounts;
  ItemList itemListDocument;
  std::optional<SubtotalCollection> expenseSubtotals;
  std::optional<SubtotalCollection> incomeSubtotals;
  std::optional<SubtotalCollection> costSubtotals;
  /// Account ids or cost-of-goods markers, by customer id, a comma, and the amount's text.
  std::optional<KeyedCollection<std::string>> billableExpenses;
  std::optional<SubtotalCollection> pastPerformance;
};

}  // namespace krnqb
