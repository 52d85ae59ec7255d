#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "import/lists/account_list.h"
#include "import/lists/item_list.h"
#include "krnqb/import_options.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// How often an expense was booked for a customer, and how often a sale took it back.
struct BilledExpense {
  std::int64_t booked = 0;  ///< expenses with the same customer and amount, duplicates included
  std::int64_t takenBack = 0;
  std::string customer;  ///< the customer's name, or else its id
  std::string amount;    ///< the amount's text
};

/// What an import has read, for its warnings. Has no effect on the import.
struct ReadingTally {
  std::int64_t lines = 0;  ///< transaction lines, booked or not
  std::unordered_map<std::string, BilledExpense>
      billedExpenses;  ///< by the key of `billableExpenses`, folded
};

/// The options of an import and the data that it has read. Nothing is reset between imports.
struct ImportState {
  /// A host may change any option during an event, so every step reads them again.
  ImportOptions options;
  XmlElement selectedExpenses;
  AccountList expenseAccounts;
  AccountList incomeAccounts;
  AccountList costAccounts;
  ItemList itemListDocument;
  std::optional<SubtotalCollection> expenseSubtotals;
  std::optional<SubtotalCollection> incomeSubtotals;
  std::optional<SubtotalCollection> costSubtotals;
  /// Account ids or cost-of-goods markers; the key is the customer id, a comma and the amount's text.
  std::optional<KeyedCollection<std::string>> billableExpenses;
  std::optional<SubtotalCollection> pastPerformance;
  ReadingTally tally;
};

}  // namespace krnqb
