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

Routine::Routine(Company& company, Draft& draft, Purchases& purchases, Random& random)
    : company_(company),
      draft_(draft),
      purchases_(purchases),
      random_(random),
      customaryBalance_(CheckingBalance()) {}

Cents Routine::CheckingBalance() const {
  return company_.accounts[company_.accounts.Of(AccountRole::Checking)].debits;
}

void Routine::BeginMonth(std::int64_t transactions) {
  month_.clear();
  written_ = 0;
  monthTransactions_ = transactions;
  const auto wanted = static_cast<std::size_t>(transactions / transactionsPerRoutineCheck);
  for (std::size_t count = std::min(wanted, everyMonth.size()); count > 0; --count) {
    month_.push_back(everyMonth[turn_++ % everyMonth.size()]);
  }
  for (std::int64_t paychecks = transactions / transactionsPerPaycheck; paychecks > 0; --paychecks) {
    month_.push_back(RoutineCheck::Payroll);
  }
}

std::optional<RoutineCheck> Routine::Due(std::int64_t transaction) const {
  if (written_ == month_.size()) return std::nullopt;
  const std::int64_t place = static_cast<std::int64_t>(written_ + 1) * monthTransactions_ /
                             static_cast<std::int64_t>(month_.size() + 1);
  if (transaction < place) return std::nullopt;
  return month_[written_];
}

company::CompanyRecord Routine::Write(RoutineCheck check, const Occasion& occasion) {
  ++written_;
  const ChartOfAccounts& accounts = company_.accounts;
  std::size_t bank = accounts.Of(AccountRole::Checking);
  draft_.Begin("CheckRet", occasion);
  switch (check) {
    case RoutineCheck::Payroll:
      Payroll(occasion);
      break;
    case RoutineCheck::PayrollLiabilities:
      PayOff(accounts.Of(AccountRole::PayrollLiabilities), customaryBalance_);
      break;
    case RoutineCheck::Rent:
      draft_.ExpenseLine(accounts.Of(AccountRole::Rent),
                         customaryBalance_ / 40 * occasion.pricePermille / 1000, "");
      break;
    case RoutineCheck::Card:
      PayOff(random_.Pick(company_.choices.cards), customaryBalance_);
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
  if (draft_.Lines() == 0) Investment();
  const std::vector<Party>& payees =
      check == RoutineCheck::Payroll ? company_.people.employees : company_.people.vendors;
  return purchases_.FinishCheck(occasion, bank, random_.Pick(payees).reference, MemoOf(check));
}

void Routine::Draw() {
  const Cents spare = CheckingBalance() - customaryBalance_;
  if (spare > 0) draft_.ExpenseLine(company_.accounts.Of(AccountRole::Draw), spare * 6 / 10 + 1, "");
}

// Moves money to savings, or back if the checking account is low.
std::size_t Routine::Saving() {
  const std::size_t checking = company_.accounts.Of(AccountRole::Checking);
  const std::size_t savings = company_.accounts.Of(AccountRole::Savings);
  if (CheckingBalance() < customaryBalance_ / 4) {
    draft_.ExpenseLine(checking, customaryBalance_ / 4, "");
    return savings;
  }
  draft_.ExpenseLine(savings, CheckingBalance() / 20 + 1, "");
  return checking;
}

void Routine::Payroll(const Occasion& occasion) {
  const Cents gross = random_.Between(900, 2600) * occasion.pricePermille / 10;
  const Cents taxes = gross * payrollTaxPercent / 100;
  draft_.ExpenseLine(company_.accounts.Of(AccountRole::Wages), gross, "Gross pay");
  draft_.ExpenseLine(company_.accounts.Of(AccountRole::PayrollTaxes), taxes, "Employer taxes");
  draft_.ExpenseLine(company_.accounts.Of(AccountRole::PayrollLiabilities),
                     -(taxes + gross * withheldPercent / 100), "Withheld and owed");
}

void Routine::Loan() {
  const std::size_t loan = company_.accounts.Of(AccountRole::Loan);
  const Cents owed = company_.accounts.Balance(loan);
  if (owed < 20'000) return;
  draft_.ExpenseLine(loan, owed / 90, "Principal");
  draft_.ExpenseLine(company_.accounts.Of(AccountRole::Interest), owed / 200, "Interest");
}

void Routine::PayOff(std::size_t account, Cents most) {
  const Cents owed = company_.accounts.Balance(account);
  if (owed > 0) draft_.ExpenseLine(account, std::min(owed, most), "");
}

// Takes the types in turn. Never pays more of a debt than is owed.
void Routine::Investment() {
  const ChartOfAccounts& accounts = company_.accounts;
  const auto& types = company_.choices.balanceSheet;
  std::size_t account = random_.Pick(types[investments_++ % types.size()]);
  const Cents amount = random_.Around(accounts[account].typical);
  if (IsCreditType(accounts[account].type) && accounts.Balance(account) < amount) {
    account = accounts.Of(AccountRole::Machinery);
  }
  draft_.ExpenseLine(account, amount, "");
}

}  // namespace krnqb::sample_company
