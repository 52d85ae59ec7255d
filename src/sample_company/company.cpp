#include "sample_company/company.h"

#include <algorithm>
#include <utility>

#include "sample_company/calendar.h"

namespace krnqb::sample_company {
namespace {

constexpr Cents leastCapital = 4'000'000;
constexpr Cents capitalPerTransaction = 6'000;
constexpr std::int64_t depreciationPercent = 10;  // of the price of equipment, per year

// The books are set up in January, two years before the first transaction.
std::int64_t SetUpTime(std::int16_t firstYear) {
  const Day day(std::chrono::year(firstYear - 2) / std::chrono::January / 15);
  return UnixTime(day, std::int64_t{9} * 3600);
}

}  // namespace

Company::Company(GeneratorSettings generatorSettings, std::int64_t fewestInAYear, Random& random)
    : settings(std::move(generatorSettings)),
      begun(SetUpTime(settings.firstYear)),
      accounts(settings.accounts, begun, random),
      choices(ChooseAccounts(accounts, settings.features, fewestInAYear)),
      items(MakeItems(settings, accounts, choices, begun, random)),
      people(MakePeople(settings.customers, begun, random)) {}

void PostOpeningBalances(Company& company, std::int64_t yearlyTransactions, Random& random) {
  ChartOfAccounts& accounts = company.accounts;
  const Cents capital = std::max(leastCapital, yearlyTransactions * capitalPerTransaction);
  for (const std::size_t bank : company.choices.banks) accounts.Post(bank, random.Around(capital / 8));
  accounts.Post(accounts.Of(AccountRole::Checking), capital);
  accounts.Post(accounts.Of(AccountRole::Savings), capital / 2);
  accounts.Post(accounts.Of(AccountRole::Machinery), capital);
  accounts.Post(accounts.Of(AccountRole::AccumulatedDepreciation), -capital / 4);
  accounts.Post(accounts.Of(AccountRole::Loan), -capital / 2);
  for (const std::vector<std::size_t>& ofType : company.choices.balanceSheet) {
    for (const std::size_t account : ofType) {
      const Cents balance = random.Around(capital / 20);
      accounts.Post(account, IsCreditType(accounts[account].type) ? -balance : balance);
    }
  }
  for (const std::size_t item : company.items.inventory) {
    const Item& stocked = company.items.items[item];
    accounts.Post(accounts.Of(AccountRole::Inventory), stocked.stock * stocked.averageCost);
  }
}

void PostClosingBalances(Company& company) {
  ChartOfAccounts& accounts = company.accounts;
  if (company.settings.features.unpostedExpenses) {
    const Cents equipment = accounts[accounts.Of(AccountRole::Machinery)].debits;
    const Cents years = company.settings.lastYear - company.settings.firstYear + 1;
    const Cents depreciation = equipment * depreciationPercent / 100 * years;
    accounts.Post(accounts.Of(AccountRole::Depreciation), depreciation);
    accounts.Post(accounts.Of(AccountRole::AccumulatedDepreciation), -depreciation);
  }
  Cents sum = 0;
  for (std::size_t account = 0; account < accounts.Size(); ++account) sum += accounts[account].debits;
  accounts.Post(accounts.Of(AccountRole::OpeningEquity), -sum);
}

}  // namespace krnqb::sample_company
