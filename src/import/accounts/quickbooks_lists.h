#pragma once

#include "import/context.h"

namespace krnqb {

/// Reads the account and item lists that the options require from QuickBooks: the expense accounts if expense
/// accounts are included, and the income accounts if income accounts or past performance are included. If
/// balances are imported, also reads the items, and the cost accounts together with the income accounts, and
/// resets the subtotals of each list to 0. A list that is not read keeps its value from the previous import.
/// Throws the error with which QuickBooks refuses a request.
void LoadQuickBooksLists(ImportContext& context);

}  // namespace krnqb
