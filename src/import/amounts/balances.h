#pragma once

#include "import/context.h"
#include "support/year_month.h"

namespace krnqb {

/// Runs the expense pass: clears `BillableExpenses`, books the bills, checks and credit-card charges of the
/// twelve months that begin with `start`, and spreads the balances of expense accounts without amounts. A
/// month or year of 0 in `start` means that of the plan. A failure, such as a month outside the calendar,
/// ends the pass and is reported to the observer; amounts already booked are kept.
void ImportExpenseBalances(ImportContext& context, const YearMonth& start);

/// Runs the income pass: books the invoices and sales receipts of the twelve months that begin with `start`.
/// `start` and failures are as for `ImportExpenseBalances`; no balances are spread.
void ImportIncomeBalances(ImportContext& context, const YearMonth& start);

/// Spreads the "Balance" of each top-level expense account whose total is 0 evenly over the months of
/// activity, or over all twelve months if no month has any. A failure is reported to the observer.
void SpreadExpenseBalances(ImportContext& context);

}  // namespace krnqb
