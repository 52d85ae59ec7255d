#pragma once

#include "import/amounts/line_booking.h"
#include "import/amounts/transaction_lines.h"

namespace krnqb {

/// Books the lines of one month's bills (10), checks (11) or credit-card charges (12). Adds each line's
/// amount to its top-level expense account or, if the line has an income account, subtracts it from that
/// account. Records each line with a customer in `BillableExpenses`. Lines that cannot be booked are skipped
/// and reported to the observer. Returns the lines, whose memory the next call uses again as `used`.
TransactionLines ReadExpenseTransactions(ImportContext& context, const TransactionQuery& query,
                                         TransactionLines used = {});

/// Deducts a billed expense: if a sales line bills a customer an amount with exactly the text of a recorded
/// expense, subtracts it from that expense's top-level account in the query's month. Returns false if there
/// is no such expense or its account is not an expense account. Failures are reported to the observer.
bool OffsetBilledExpense(LineBooking& booking, const TransactionLine& line);

}  // namespace krnqb
