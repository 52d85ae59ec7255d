#pragma once

#include <cstdint>

#include "sample_company/account_choices.h"
#include "sample_company/accounts.h"
#include "sample_company/generator.h"
#include "sample_company/items.h"
#include "sample_company/people.h"
#include "sample_company/random.h"

namespace krnqb::sample_company {

/// The lists of a company with its running balances and stock.
struct Company {
  /// `fewestInAYear` is the number of transactions of the quietest year.
  Company(GeneratorSettings generatorSettings, std::int64_t fewestInAYear, Random& random);

  GeneratorSettings settings;
  std::int64_t begun;  ///< when it was set up, in seconds since 1970
  ChartOfAccounts accounts;
  AccountChoices choices;
  ItemList items;
  People people;
};

/// Gives the company what it had before its first transaction: money, stock, equipment and debts, in
/// proportion to its `yearlyTransactions`. Nothing is owed by customers or to vendors.
void PostOpeningBalances(Company& company, std::int64_t yearlyTransactions, Random& random);

/// Ends the books after the last transaction: the depreciation of equipment, when there are expenses without
/// a posting, and the equity with which the company must have been opened for all balances to come to zero.
void PostClosingBalances(Company& company);

}  // namespace krnqb::sample_company
