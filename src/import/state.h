#pragma once

#include <optional>

#include "import/lists/account_list.h"
#include "import/lists/item_list.h"
#include "krnqb/import_options.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// The options of an import and the data that it has read. Nothing is reset between imports.
struct ImportState {
  /// A host may change any option during an event, so every step reads them anew.
  ImportOptions options;
  XmlElement selectedExpenses;
  AccountList expenseAccounts;
  AccountList incomeAccounts;
  AccountList costAccounts;
  ItemList itemListDocument;
  std::optional<SubtotalCollection> expenseSubtotals;
  std::optional<SubtotalCollection> incomeSubtotals;
  std::optional<SubtotalCollection> costSubtotals;
  /// Account ids or cost-of-goods markers, keyed by customer id, comma and amount text.
  std::optional<KeyedCollection<std::string>> billableExpenses;
  std::optional<SubtotalCollection> pastPerformance;
};

}  // namespace krnqb
