#pragma once

#include "import/context.h"
#include "support/year_month.h"

namespace krnqb {

/// The expense pass: books the bills, checks and credit-card charges of the twelve months that begin with
/// `start`, in which 0 means the plan's own month or year, then spreads the balances of expense accounts
/// without any. `BillableExpenses` begins empty. A failure (such as a month outside the calendar) is reported
/// to the observer and ends the pass; what was booked stays.
void ImportExpenseBalances(ImportContext& context, const YearMonth& start);

/// The income pass: books the invoices and sales receipts of the twelve months, likewise.
void ImportIncomeBalances(ImportContext& context, const YearMonth& start);

/// Spreads the "Balance" of each top-level expense account whose total is 0 evenly over the months of
/// activity (all twelve when there is none).
void SpreadExpenseBalances(ImportContext& context);

}  // namespace krnqb
