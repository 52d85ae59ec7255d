#pragma once

#include "import/amounts/line_booking.h"

namespace krnqb {

/// Books the lines of one month's bills (10), checks (11) or credit-card charges (12): each line's amount is
/// added to its top-level expense account, or, when its account is an income account, subtracted from that; a
/// line that names a customer is recorded in `BillableExpenses`. What cannot be placed is skipped and told to
/// the observer.
void ReadExpenseTransactions(ImportContext& context, const TransactionQuery& query);

/// Takes a billed expense back: when a line bills a customer exactly the amount text of a recorded expense,
/// the amount is subtracted from that expense's top-level account in the line's month. Gives whether it was;
/// a failure is told to the observer.
bool OffsetBilledExpense(LineBooking& booking, const TransactionLine& line);

}  // namespace krnqb
