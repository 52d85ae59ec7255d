#include "sample_company/routine.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace krnqb::sample_company {
namespace {

constexpr std::array everyMonth = {RoutineCheck::Payroll,
                                   RoutineCheck::Rent,
                                   RoutineCheck::Card,
                                   RoutineCheck::Payroll,
                                   RoutineCheck::PayrollLiabilities,
                                   RoutineCheck::Loan,
                                   RoutineCheck::Investment,
                                   RoutineCheck::Saving,
                                   RoutineCheck::Draw};
constexpr std::int64_t transactionsPerRoutineCheck = 8;
constexpr std::int64_t transactionsPerPaycheck = 60;  // a larger company has more employees
constexpr std::int64_t payrollTaxPercent = 8;
constexpr std::int64_t withheldPercent = 21;

std::string_view MemoOf(RoutineCheck check) {
  switch (check) {
    case RoutineCheck::Payroll:
      return "Wages";
    case RoutineCheck::PayrollLiabilities:
      return "Payroll liabilities";
    case RoutineCheck::Rent:
      return "Rent";
    case RoutineCheck::Card:
      return "Card statement";
    case RoutineCheck::Draw:
      return "To the owner";
    case RoutineCheck::Loan:
      return "Loan payment";
    case RoutineCheck::Saving:
      return "Transfer";
    case RoutineCheck::Investment:
      break;
  }
  return "Installment";
}

}  // namespace

Routine::Routine(Company& payingCompany, Draft& transactionDraft, Purchases& companyPurchases,
                 Random& randomChoices)
    : company(payingCompany),
      draft(transactionDraft),
      purchases(companyPurchases),
      random(randomChoices),
      customaryBalance(CheckingBalance()) {}

Cents Routine::CheckingBalance() const {
  return company.accounts[company.accounts.Of(AccountRole::Checking)].debits;
}

void Routine::BeginMonth(std::int64_t transactions) {
  month.clear();
  written = 0;
  monthTransactions = transactions;
  const auto wanted = static_cast<std::size_t>(transactions / transactionsPerRoutineCheck);
  for (std::size_t count = std::min(wanted, everyMonth.size()); count > 0; --count) {
    month.push_back(everyMonth[turn++ % everyMonth.size()]);
  }
  for (std::int64_t paychecks = transactions / transactionsPerPaycheck; paychecks > 0; --paychecks) {
    month.push_back(RoutineCheck::Payroll);
  }
}

std::optional<RoutineCheck> Routine::Due(std::int64_t transaction) const {
  if (written == month.size()) return std::nullopt;
  const std::int64_t place = static_cast<std::int64_t>(written + 1) * monthTransactions /
                             static_cast<std::int64_t>(month.size() + 1);
  if (transaction < place) return std::nullopt;
  return month[written];
}

company::CompanyRecord Routine::Write(RoutineCheck check, const Occasion& occasion) {
  ++written;
  const ChartOfAccounts& accounts = company.accounts;
  std::size_t bank = accounts.Of(AccountRole::Checking);
  draft.Begin("CheckRet", occasion);
  switch (check) {
    case RoutineCheck::Payroll:
      Payroll(occasion);
      break;
    case RoutineCheck::PayrollLiabilities:
      PayOff(accounts.Of(AccountRole::PayrollLiabilities), customaryBalance);
      break;
    case RoutineCheck::Rent:
      draft.ExpenseLine(accounts.Of(AccountRole::Rent), customaryBalance / 40 * occasion.pricePermille / 1000,
                        "");
      break;
    case RoutineCheck::Card:
      PayOff(random.Pick(company.choices.cards), customaryBalance);
      break;
    case RoutineCheck::Draw:
      Draw();
      break;
    case RoutineCheck::Loan:
      Loan();
      break;
    case RoutineCheck::Saving:
      bank = Saving();
      break;
    case RoutineCheck::Investment:
      break;
  }
  if (draft.Lines() == 0) Investment();
  const std::vector<Party>& payees =
      check == RoutineCheck::Payroll ? company.people.employees : company.people.vendors;
  return purchases.FinishCheck(occasion, bank, random.Pick(payees).reference, MemoOf(check));
}

void Routine::Draw() {
  const Cents spare = CheckingBalance() - customaryBalance;
  if (spare > 0) draft.ExpenseLine(company.accounts.Of(AccountRole::Draw), spare * 6 / 10 + 1, "");
}

// Money goes to the savings, or comes back when the checking account is low.
std::size_t Routine::Saving() {
  const std::size_t checking = company.accounts.Of(AccountRole::Checking);
  const std::size_t savings = company.accounts.Of(AccountRole::Savings);
  if (CheckingBalance() < customaryBalance / 4) {
    draft.ExpenseLine(checking, customaryBalance / 4, "");
    return savings;
  }
  draft.ExpenseLine(savings, CheckingBalance() / 20 + 1, "");
  return checking;
}

void Routine::Payroll(const Occasion& occasion) {
  const Cents gross = random.Between(900, 2600) * occasion.pricePermille / 10;
  const Cents taxes = gross * payrollTaxPercent / 100;
  draft.ExpenseLine(company.accounts.Of(AccountRole::Wages), gross, "Gross pay");
  draft.ExpenseLine(company.accounts.Of(AccountRole::PayrollTaxes), taxes, "Employer taxes");
  draft.ExpenseLine(company.accounts.Of(AccountRole::PayrollLiabilities),
                    -(taxes + gross * withheldPercent / 100), "Withheld and owed");
}

void Routine::Loan() {
  const std::size_t loan = company.accounts.Of(AccountRole::Loan);
  const Cents owed = company.accounts.Balance(loan);
  if (owed < 20'000) return;
  draft.ExpenseLine(loan, owed / 90, "Principal");
  draft.ExpenseLine(company.accounts.Of(AccountRole::Interest), owed / 200, "Interest");
}

void Routine::PayOff(std::size_t account, Cents most) {
  const Cents owed = company.accounts.Balance(account);
  if (owed > 0) draft.ExpenseLine(account, std::min(owed, most), "");
}

// One type after the other. A debt is not paid beyond what is owed.
void Routine::Investment() {
  const ChartOfAccounts& accounts = company.accounts;
  const auto& types = company.choices.balanceSheet;
  std::size_t account = random.Pick(types[investments++ % types.size()]);
  const Cents amount = random.Around(accounts[account].typical);
  if (IsCreditType(accounts[account].type) && accounts.Balance(account) < amount) {
    account = accounts.Of(AccountRole::Machinery);
  }
  draft.ExpenseLine(account, amount, "");
}

}  // namespace krnqb::sample_company
