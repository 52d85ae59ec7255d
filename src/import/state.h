#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "import/billable_expenses.h"
#include "import/lists/account_list.h"
#include "import/lists/item_list.h"
#include "krnqb/import_options.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// What an import has read, for its warnings. Has no effect on the import.
struct ReadingTally {
  std::int64_t lines = 0;     ///< transaction lines, booked or not
  std::int64_t reported = 0;  ///< transaction lines passed to the receiver of bookings, in all imports
  /// How often more was billed than was booked, by the customer's name (or else id) and the amount's text.
  std::map<std::pair<std::string, std::string>, std::int64_t> billedAgain;
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
  std::optional<BillableExpenses> billableExpenses;
  std::optional<SubtotalCollection> pastPerformance;
  ReadingTally tally;
};

}  // namespace krnqb
