#pragma once

#include "import/amounts/line_booking.h"
#include "import/amounts/transaction_lines.h"

namespace krnqb {

/// Books the lines of one month's invoices (20) or sales receipts (21). Adds each line's amount to its item's
/// top-level income account or, if the item posts to an expense account, subtracts it from that account. For
/// an inventory item, books the cost of goods first. A line whose item has no account may bill a recorded
/// expense, see `OffsetBilledExpense`. Lines that cannot be booked are skipped and reported to the observer.
/// Returns the lines, whose memory the next call uses again as `used`.
TransactionLines ReadSalesTransactions(ImportContext& context, const TransactionQuery& query,
                                       TransactionLines used = {});

/// Adds quantity times average cost to the sale's top-level cost-of-goods account in the query's month and
/// returns the sale's income account. Reports the line as skipped if the cost account is not in the list.
/// Throws Error 5 if the subtotal is missing and Error 6 if the cost or the sum is out of range.
AccountId BookCostOfSale(LineBooking& booking, const TransactionLine& line, const CostOfSale& sale,
                         float quantity);

}  // namespace krnqb
