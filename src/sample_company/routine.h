#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "sample_company/draft.h"
#include "sample_company/purchases.h"
#include "sample_company/random.h"

namespace krnqb::sample_company {

enum class RoutineCheck { Payroll, PayrollLiabilities, Rent, Card, Draw, Loan, Saving, Investment };

/// The checks that come back month by month: wages, rent, debts that are paid off, and what the owner takes.
/// A quiet month has some of them, by turns.
class Routine {
 public:
  Routine(Company& company, Draft& draft, Purchases& purchases, Random& random);

  /// `transactions` is the number of all transactions of the month to come.
  void BeginMonth(std::int64_t transactions);
  /// The check to be written as the month's transaction with this number, counted from 0, or since.
  std::optional<RoutineCheck> Due(std::int64_t transaction) const;
  /// Writes it. Where there is nothing to pay, the money goes into an asset or a debt.
  company::CompanyRecord Write(RoutineCheck check, const Occasion& occasion);

 private:
  void Payroll(const Occasion& occasion);
  void Loan();
  void Draw();
  /// Gives the account on which the check is drawn.
  std::size_t Saving();
  /// Writes a line for what is owed on an account with a credit balance, if anything.
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
