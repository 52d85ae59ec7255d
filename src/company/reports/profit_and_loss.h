#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/database.h"
#include "company/reports/period.h"
#include "company/reports/rows.h"

namespace krnqb::company {

/// An account of a profit and loss. Amounts are in hundredths of the currency; income is positive if
/// credited, costs and expenses are positive if debited.
struct ProfitAndLossAccount {
  std::string id;                       ///< ListID
  std::string label;                    ///< its name, preceded by its number if numbers are in use
  std::string fullName;                 ///< the labels from the top level down, separated by ":"
  std::string_view type;                ///< such as "Income"
  std::size_t level = 0;                ///< the number of its ancestors of the same type
  std::size_t topLevel = 0;             ///< index of its top-level account
  RowAmounts own;                       ///< what is posted to the account itself, by month
  RowAmounts withSubAccounts;           ///< and to its sub-accounts
  std::optional<std::int64_t> balance;  ///< its own, as in its record; nullopt if the record has none
  std::int64_t posted = 0;              ///< to the account itself, by all transactions of all days
  std::optional<std::int64_t> Unexplained()
      const;  ///< what `posted` lacks of the balance; nullopt without one
};

/// A company's profit and loss by month, on the accrual basis.
struct ProfitAndLoss {
  std::string period;  ///< such as "January through December 2002"
  std::vector<ReportColumn> months;
  /// All accounts of types Income, CostOfGoodsSold, Expense, OtherIncome and OtherExpense, in this order;
  /// each is followed by its sub-accounts.
  std::vector<ProfitAndLossAccount> accounts;

  /// Returns the sums of a type's accounts by month.
  RowAmounts SumOf(std::string_view accountType) const;
};

/// Adds up what the company's transactions post from `firstDay` to `lastDay`, both YYYY-MM-DD; the first and
/// the last month have only the days of that range. No months if the first day is after the last.
ProfitAndLoss ComputeProfitAndLoss(const Database& database, std::string_view firstDay,
                                   std::string_view lastDay);

}  // namespace krnqb::company
