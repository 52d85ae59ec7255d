#pragma once

#include "import/amounts/line_booking.h"

namespace krnqb {

/// Books the lines of one month's invoices (20) or sales receipts (21): each line's amount is added to its
/// item's top-level income account, or, when that is an expense account, subtracted from it; the sale of an
/// inventory item books its cost of goods first. A line whose item has no account may bill an expense
/// (`OffsetBilledExpense`). What cannot be placed is skipped and told to the observer.
void ReadSalesTransactions(ImportContext& context, const TransactionQuery& query);

/// Adds quantity times average cost to the sale's top-level cost-of-goods account in the query's month and
/// returns the sale's income account. Throws Error 5 if the subtotal is missing, Error 6 if the cost or the
/// sum leaves the range of a double.
AccountId BookCostOfSale(LineBooking& booking, const TransactionLine& line, const CostOfSale& sale,
                         float quantity);

}  // namespace krnqb
