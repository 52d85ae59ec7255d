#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sample_company/accounts.h"
#include "sample_company/generator.h"

namespace krnqb::sample_company {

/// The accounts that each kind of posting chooses from, by index.
struct AccountChoices {
  std::vector<std::size_t> banks;  ///< the checking account first
  std::vector<std::size_t> cards;
  /// Assets, debts and equity that an occasional check pays into, grouped by type.
  std::vector<std::vector<std::size_t>> balanceSheet;
  std::vector<std::size_t> incomes;         ///< of items
  std::vector<std::size_t> costs;           ///< of inventory items
  std::vector<std::size_t> loneExpenses;    ///< without parent and sub-accounts; posted to every year
  std::vector<std::size_t> subExpenses;     ///< with a parent
  std::vector<std::size_t> expenseParents;  ///< empty when accounts with sub-accounts have no postings
  std::vector<std::size_t> incomeParents;   ///< likewise

  /// Returns mostly the checking account, sometimes another bank account.
  std::size_t Bank(Random& random) const;
};

/// Chooses the accounts. `fewestInAYear` is the number of transactions of the quietest year, which limits the
/// number of lone expense accounts.
AccountChoices ChooseAccounts(const ChartOfAccounts& accounts, const CompanyFeatures& features,
                              std::int64_t fewestInAYear);

}  // namespace krnqb::sample_company
