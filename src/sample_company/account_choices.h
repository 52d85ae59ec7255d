#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sample_company/accounts.h"
#include "sample_company/generator.h"

namespace krnqb::sample_company {

/// The accounts among which postings of a kind choose, by index.
struct AccountChoices {
  std::vector<std::size_t> banks;  ///< the checking account first
  std::vector<std::size_t> cards;
  /// Assets, debts and equity that a check now and then pays into: those of each type together.
  std::vector<std::vector<std::size_t>> balanceSheet;
  std::vector<std::size_t> incomes;         ///< of items
  std::vector<std::size_t> costs;           ///< of inventory items
  std::vector<std::size_t> loneExpenses;    ///< without parent and sub-accounts: posted to in every year
  std::vector<std::size_t> subExpenses;     ///< with a parent
  std::vector<std::size_t> expenseParents;  ///< empty when accounts with sub-accounts have no postings
  std::vector<std::size_t> incomeParents;   ///< likewise

  /// Mostly the checking account, now and then any of the banks.
  std::size_t Bank(Random& random) const;
};

/// `fewestInAYear` is the number of transactions of the quietest year: no more lone expense accounts are
/// chosen than it can serve.
AccountChoices ChooseAccounts(const ChartOfAccounts& accounts, const CompanyFeatures& features,
                              std::int64_t fewestInAYear);

}  // namespace krnqb::sample_company
