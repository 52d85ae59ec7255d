#pragma once

#include "import/context.h"

namespace krnqb {

/// Reads from QuickBooks the account and item lists that the options call for: the expense accounts for the
/// expense accounts, the income accounts for the income accounts or past performance, and with a balances
/// import the cost accounts and the items beside the income accounts. With a balances import each list's
/// subtotals begin anew at 0. What is not read keeps the value of the import before. Throws what QuickBooks
/// refuses a request with.
void LoadQuickBooksLists(ImportContext& context);

}  // namespace krnqb
