#pragma once

#include <cstdint>

#include "import/context.h"

namespace krnqb {

/// The expense pass: books the bills, checks and credit-card charges of the twelve months that begin with a
/// month (1 to 12) of a year, then spreads the balances of expense accounts without any. `BillableExpenses`
/// begins empty. A failure (such as a month outside the calendar) is told to the observer and ends the pass;
/// what was booked stays.
void ImportExpenseBalances(ImportContext& context, std::int16_t startMonth, std::int16_t startYear);

/// The income pass: books the invoices and sales receipts of the twelve months, likewise.
void ImportIncomeBalances(ImportContext& context, std::int16_t startMonth, std::int16_t startYear);

/// Spreads the "Balance" of each top-level expense account whose total is 0 evenly over the months of
/// activity (all twelve when there is none).
void SpreadExpenseBalances(ImportContext& context);

}  // namespace krnqb
