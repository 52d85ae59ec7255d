#include "import/billable_expenses.h"

#include <gtest/gtest.h>

#include <string>

namespace krnqb {
namespace {

TEST(BillableExpensesOfAnImport, AreFoundByKeyInAnyCase) {
  BillableExpenses expenses;
  expenses.Add({.account = "E-1", .line = 7}, "K-\u00c4,75.00");
  ASSERT_NE(expenses.Find("k-\u00e4,75.00"), nullptr);
  EXPECT_EQ(expenses.Find("k-\u00e4,75.00")->line, 7);
  EXPECT_EQ(expenses.Find("K-\u00c4,75.0"), nullptr);
}

TEST(BillableExpensesOfAnImport, KeepTheFirstOneUnderAKey) {
  BillableExpenses expenses;
  EXPECT_TRUE(expenses.Add({.account = "E-1"}, "K-1,75.00").second);
  const auto [present, added] = expenses.Add({.account = "E-2"}, "k-1,75.00");
  EXPECT_FALSE(added);
  EXPECT_EQ(present, expenses.Find("K-1,75.00"));
  EXPECT_EQ(present->account, "E-1");
  EXPECT_EQ(expenses.Count(), 1U);
}

TEST(BillableExpensesOfAnImport, HaveTheirOwnCopiesOfKeysAndAccounts) {
  BillableExpenses expenses;
  for (int number = 0; number < 1000; ++number) {
    std::string account = "account " + std::to_string(number % 3);
    std::string key = "customer," + std::to_string(number);
    expenses.Add({.account = account}, key);
    account.assign(account.size(), 'x');
    key.assign(key.size(), 'x');
  }
  for (int number = 0; number < 1000; ++number) {
    const BillableExpense* const expense = expenses.Find("customer," + std::to_string(number));
    ASSERT_NE(expense, nullptr) << number;
    EXPECT_EQ(expense->account, "account " + std::to_string(number % 3));
  }
}

}  // namespace
}  // namespace krnqb
