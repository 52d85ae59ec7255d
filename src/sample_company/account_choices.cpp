#include "sample_company/account_choices.h"

#include <algorithm>
#include <array>

namespace krnqb::sample_company {
namespace {

constexpr std::int64_t transactionsPerLoneExpense = 8;
constexpr unsigned percentChecking = 85;

// Balance sheet types whose accounts without a role receive payments.
constexpr std::array paidInto = {
    std::string_view("OtherCurrentAsset"), std::string_view("OtherCurrentLiability"),
    std::string_view("OtherAsset"),        std::string_view("LongTermLiability"),
    std::string_view("FixedAsset"),        std::string_view("Equity")};

// Accounts without a role, used by ordinary transactions.
void ChooseOrdinary(AccountChoices& choices, const Account& account, std::size_t index) {
  if (account.type == "Income") choices.incomes.push_back(index);
  if (account.type == "CostOfGoodsSold") choices.costs.push_back(index);
  if (account.type == "Expense") {
    (account.sublevel == 0 ? choices.loneExpenses : choices.subExpenses).push_back(index);
  }
  const auto* const type = std::ranges::find(paidInto, account.type);
  if (type != paidInto.end())
    choices.balanceSheet[static_cast<std::size_t>(type - paidInto.begin())].push_back(index);
}

void ChooseParent(AccountChoices& choices, const Account& account, std::size_t index) {
  if (account.type == "Income") choices.incomeParents.push_back(index);
  if (account.type == "Expense") choices.expenseParents.push_back(index);
}

}  // namespace

std::size_t AccountChoices::Bank(Random& random) const {
  return random.Chance(percentChecking) ? banks.front() : random.Pick(banks);
}

AccountChoices ChooseAccounts(const ChartOfAccounts& accounts, const CompanyFeatures& features,
                              std::int64_t fewestInAYear) {
  AccountChoices choices;
  choices.balanceSheet.resize(paidInto.size());
  for (std::size_t index = 0; index < accounts.Size(); ++index) {
    const Account& account = accounts[index];
    if (account.hasChildren) {
      if (features.parentPostings) ChooseParent(choices, account, index);
      continue;
    }
    if (account.type == "Bank" && account.role != AccountRole::Savings) choices.banks.push_back(index);
    if (account.type == "CreditCard") choices.cards.push_back(index);
    if (account.role == AccountRole::None) ChooseOrdinary(choices, account, index);
  }
  std::erase_if(choices.balanceSheet, [](const auto& ofType) { return ofType.empty(); });
  const auto served =
      static_cast<std::size_t>(std::max<std::int64_t>(1, fewestInAYear / transactionsPerLoneExpense));
  if (choices.loneExpenses.size() > served) choices.loneExpenses.resize(served);
  return choices;
}

}  // namespace krnqb::sample_company
