#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "sample_company/draft.h"
#include "sample_company/purchases.h"
#include "sample_company/random.h"

namespace krnqb::sample_company {

enum class RoutineCheck { Payroll, PayrollLiabilities, Rent, Card, Draw, Loan, Saving, Investment };

/// The monthly checks: wages, rent, repayments and the owner's draw. A quiet month has only some of them, in
/// turn.
class Routine {
 public:
  Routine(Company& company, Draft& draft, Purchases& purchases, Random& random);

  /// Begins a month with `transactions` transactions in total.
  void BeginMonth(std::int64_t transactions);
  /// Returns the check due at the month's transaction with this number, counted from 0, or overdue.
  std::optional<RoutineCheck> Due(std::int64_t transaction) const;
  /// Writes a check. If nothing is owed, the money goes to an asset or a debt.
  company::CompanyRecord Write(RoutineCheck check, const Occasion& occasion);

 private:
  void Payroll(const Occasion& occasion);
  void Loan();
  void Draw();
  /// Returns the account on which the check is drawn.
  std::size_t Saving();
  /// Writes a line for the credit balance of an account, if any.
  void PayOff(std::size_t account, Cents most);
  void Investment();
  Cents CheckingBalance() const;

  Company& company_;
  Draft& draft_;
  Purchases& purchases_;
  Random& random_;
  Cents customaryBalance_;  // of the checking account
  std::vector<RoutineCheck> month_;
  std::int64_t monthTransactions_ = 0;
  std::size_t written_ = 0;
  std::size_t turn_ = 0;
  std::size_t investments_ = 0;
};

}  // namespace krnqb::sample_company
