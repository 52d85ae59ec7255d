#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "import/amounts/transaction_line.h"
#include "import/amounts/transaction_query.h"
#include "import/context.h"
#include "import/lists/account_list.h"
#include "import/lists/cost_of_sale.h"

namespace krnqb {

/// Books the amounts of one query's lines: what `ReadExpenseTransactions` and `ReadSalesTransactions` share.
class LineBooking {
 public:
  /// Both outlive the booking.
  LineBooking(ImportContext& importContext, const TransactionQuery& transactionQuery, Operation operation)
      : context(importContext), query(transactionQuery), place(transactionQuery.At(operation)) {}

  /// The line's amount; 0, told to the observer, when it has none that is a number.
  double AmountOf(const TransactionLine& line);

  /// Adds an amount to the month of the top-level account above an account. False when the group's list does
  /// not hold the account; a missing subtotal or a sum out of range is told to the observer.
  bool AddTo(AccountGroup group, std::string_view accountId, double amount, const TransactionLine& line);

  void ReportSkipped(const TransactionLine& line, SkipReason reason, std::string_view account);

  const std::string& TopLevelName(AccountGroup group, std::string_view accountId) const;

  /// Returns the cost of sale of a posting that is one or the marker of one. Throws Error 91 if the marker
  /// does not parse.
  const CostOfSale& CostOfSaleIn(const SalePosting& posting);

  ImportContext& context;
  const TransactionQuery& query;
  const Place place;

 private:
  // The markers read: many lines sell the same item.
  std::unordered_map<std::string, CostOfSale> costs_;
};

/// The list and the subtotals of an account group.
const AccountList& AccountsOf(const ImportState& state, AccountGroup group);
std::optional<SubtotalCollection>& SubtotalsOf(ImportState& state, AccountGroup group);

}  // namespace krnqb
