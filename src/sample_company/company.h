#pragma once

#include <cstdint>

#include "sample_company/account_choices.h"
#include "sample_company/accounts.h"
#include "sample_company/generator.h"
#include "sample_company/items.h"
#include "sample_company/people.h"
#include "sample_company/random.h"

namespace krnqb::sample_company {

/// The lists of a company, with current balances and stock.
struct Company {
  /// `fewestInAYear` is the number of transactions of the quietest year.
  Company(GeneratorSettings generatorSettings, std::int64_t fewestInAYear, Random& random);

  GeneratorSettings settings;
  std::int64_t begun;  ///< set-up time, in seconds since 1970
  ChartOfAccounts accounts;
  AccountChoices choices;
  ItemList items;
  People people;
};

/// Posts the balances before the first transaction: money, stock, equipment and debts, in proportion to
/// `yearlyTransactions`. Customers and vendors have no open balances.
void PostOpeningBalances(Company& company, std::int64_t yearlyTransactions, Random& random);

/// Closes the books after the last transaction: posts the depreciation of equipment, if there are unposted
/// expenses, and the opening equity that makes all balances sum to zero.
void PostClosingBalances(Company& company);

}  // namespace krnqb::sample_company
