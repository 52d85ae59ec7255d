#include "import/amounts/balances.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "fakes/import_surroundings.h"

namespace krnqb {
namespace {

using fakes::AccountRef;
using fakes::Amount;
using fakes::Element;
using fakes::ExpenseLine;
using fakes::RecordAnswer;

class MonthlyPasses : public testing::Test {
 protected:
  /// Answers with a bill of an amount in the month that begins on a day.
  void Spend(const std::string& firstDay, const std::string& amount) {
    surroundings.quickBooks->answers["10 " + firstDay] =
        RecordAnswer("BillQueryRs", Element("BillRet", ExpenseLine(AccountRef("E-1") + Amount(amount))));
  }
  void Earn(const std::string& kind, const std::string& firstDay, const std::string& amount) {
    const std::string name = kind == "20" ? "Invoice" : "SalesReceipt";
    surroundings.quickBooks->answers[kind + " " + firstDay] = RecordAnswer(
        name + "QueryRs",
        Element(name + "Ret", Element(name + "LineRet", fakes::ItemRef("IT-1") + Amount(amount))));
  }
  static std::vector<double> Months(const cSubtotals& record) {
    std::vector<double> months;
    for (std::int16_t month = 1; month <= 12; ++month) months.push_back(record.SubTotal(month));
    return months;
  }
  std::vector<double> RentByMonth() const { return Months(surroundings.state.expenseSubtotals->At("Rent")); }

  fakes::ImportSurroundings surroundings;
};

struct PassMonth {
  const char* percent;
  const char* firstDay;
  const char* lastDay;
};
constexpr std::array<PassMonth, 12> fromNovember2003 = {{{"8", "2003-11-01", "2003-11-30"},
                                                         {"17", "2003-12-01", "2003-12-31"},
                                                         {"25", "2004-01-01", "2004-01-31"},
                                                         {"33", "2004-02-01", "2004-02-29"},
                                                         {"42", "2004-03-01", "2004-03-31"},
                                                         {"50", "2004-04-01", "2004-04-30"},
                                                         {"58", "2004-05-01", "2004-05-31"},
                                                         {"67", "2004-06-01", "2004-06-30"},
                                                         {"75", "2004-07-01", "2004-07-31"},
                                                         {"83", "2004-08-01", "2004-08-31"},
                                                         {"92", "2004-09-01", "2004-09-30"},
                                                         {"100", "2004-10-01", "2004-10-31"}}};

std::string WholePass(const std::string& description, const std::vector<std::string>& kinds) {
  std::string lines;
  for (const PassMonth& month : fromNovember2003) {
    lines += std::string("ProgressBarChange ") + month.percent + " " + description + "\n";
    for (const std::string& kind : kinds) {
      lines += "ProcessRequest " + kind + " " + month.firstDay + " " + month.lastDay + "\n";
    }
  }
  return lines;
}

TEST_F(MonthlyPasses, RequestBillsChecksAndChargesOfTwelveMonths) {
  ImportExpenseBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(surroundings.journal->Text(), WholePass("Importing expense balances...", {"10", "11", "12"}));
  EXPECT_TRUE(surroundings.observer.notices.empty());
}

TEST_F(MonthlyPasses, RequestInvoicesAndSalesReceiptsOfTwelveMonths) {
  ImportIncomeBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(surroundings.journal->Text(), WholePass("Importing income balances...", {"20", "21"}));
}

TEST_F(MonthlyPasses, GiveEachAnswerBackBeforeTheyAskForTheNext) {
  Spend("2003-11-01", "1");
  Spend("2003-12-01", "2");
  std::size_t back = 0;
  surroundings.journal->On("ProcessRequest 11 2003-12-01 2003-12-31",
                           [&] { back = surroundings.quickBooks->takenBack.size(); });
  ImportExpenseBalances(surroundings.context, {.year = 2003, .month = 11});
  const std::vector<std::string>& takenBack = surroundings.quickBooks->takenBack;
  EXPECT_EQ(back, 2U);
  ASSERT_EQ(takenBack.size(), 2U);  // the others have no lines and are freed
  EXPECT_EQ(takenBack[0], surroundings.quickBooks->answers["10 2003-11-01"]);
  EXPECT_EQ(takenBack[1], surroundings.quickBooks->answers["10 2003-12-01"]);
  EXPECT_EQ(RentByMonth()[1], 2);
}

TEST_F(MonthlyPasses, NumberTheSlotsFromTheFirstMonth) {
  Spend("2003-11-01", "1");
  Spend("2003-12-01", "2");
  Spend("2004-01-01", "4");
  Spend("2004-10-01", "8");
  Spend("2004-11-01", "16");
  ImportExpenseBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(RentByMonth(), (std::vector<double>{1, 2, 4, 0, 0, 0, 0, 0, 0, 0, 0, 8}));
}

TEST_F(MonthlyPasses, AddInvoicesAndSalesReceipts) {
  surroundings.SetItems(fakes::OneAccountItem("IT-1", "I-1"));
  Earn("20", "2003-12-01", "1");
  Earn("21", "2003-12-01", "2");
  Earn("21", "2004-10-01", "4");
  ImportIncomeBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(Months(surroundings.state.incomeSubtotals->At("Plants")),
            (std::vector<double>{0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 4}));
}

TEST_F(MonthlyPasses, AddToExistingAmounts) {
  Spend("2003-11-01", "1");
  ImportExpenseBalances(surroundings.context, {.year = 2003, .month = 11});
  ImportExpenseBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(surroundings.Expense("Rent", 1), 2);
}

TEST_F(MonthlyPasses, UseThePlansStartForAMonthAndYearOfZero) {
  surroundings.state.options.period = {
      .krnStartingMonth = 4, .krnStartingYear = 2003, .startingMonth = 0, .startingYear = 0};
  ImportIncomeBalances(surroundings.context, {.year = 0, .month = 0});
  EXPECT_EQ(surroundings.journal->Count("ProcessRequest 20 2003-04-01 2003-04-30"), 1);
  EXPECT_EQ(surroundings.journal->Count("ProcessRequest 21 2004-03-01 2004-03-31"), 1);
}

TEST_F(MonthlyPasses, UseThePlansStartAfterTheFirstProgressEvent) {
  PeriodFields& period = surroundings.state.options.period;
  period = {.krnStartingMonth = 4, .krnStartingYear = 2003, .startingMonth = 0, .startingYear = 0};
  surroundings.journal->On("ProgressBarChange 8 Importing income balances...",
                           [&period] { period.krnStartingMonth = 6; });
  surroundings.journal->On("ProgressBarChange 17 Importing income balances...",
                           [&period] { period.krnStartingMonth = 9; });
  ImportIncomeBalances(surroundings.context, {});
  EXPECT_EQ(surroundings.journal->Count("ProcessRequest 20 2003-06-01 2003-06-30"), 1);
  EXPECT_EQ(surroundings.journal->Count("ProcessRequest 20 2003-07-01 2003-07-31"), 1);
}

TEST_F(MonthlyPasses, ForExpensesClearTheBillableExpenses) {
  surroundings.state.billableExpenses->Add({.account = "E-1"}, "K-1,75.00");
  surroundings.quickBooks->answers["12 2003-12-01"] =
      RecordAnswer("CreditCardChargeQueryRs",
                   Element("CreditCardChargeRet",
                           ExpenseLine(AccountRef("E-2") + Amount("76.00") + fakes::CustomerRef("K-1"))));
  ImportExpenseBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(surroundings.state.billableExpenses->Count(), 1U);
  EXPECT_EQ(surroundings.state.billableExpenses->Find("K-1,76.00")->account, "E-2");
}

TEST_F(MonthlyPasses, ForExpensesCreateMissingBillableExpenses) {
  surroundings.state.billableExpenses.reset();
  ImportExpenseBalances(surroundings.context, {.year = 2003, .month = 11});
  ASSERT_TRUE(surroundings.state.billableExpenses);
  EXPECT_EQ(surroundings.state.billableExpenses->Count(), 0U);
}

TEST_F(MonthlyPasses, ForIncomeKeepTheBillableExpenses) {
  surroundings.state.billableExpenses->Add({.account = "E-1"}, "K-1,75.00");
  ImportIncomeBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(surroundings.state.billableExpenses->Count(), 1U);
}

TEST_F(MonthlyPasses, EndAtAMonthOutsideTheCalendar) {
  for (const auto& pass : {&ImportExpenseBalances, &ImportIncomeBalances}) {
    surroundings.journal->Clear();
    surroundings.observer.notices.clear();
    pass(surroundings.context, {.year = 2003, .month = 13});
    EXPECT_EQ(surroundings.journal->Text().find("ProcessRequest"), std::string::npos);
    EXPECT_TRUE(surroundings.journal->Text().starts_with("ProgressBarChange 8 "))
        << surroundings.journal->Text();
    EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::typeMismatch));
  }
  EXPECT_EQ(surroundings.errorPair.number, 0);
}

TEST_F(MonthlyPasses, EndAtAYearOutsideTheCalendarAndKeepEarlierMonths) {
  surroundings.state.expenseAccounts = fakes::ImportSurroundings::List(
      "4", {fakes::Account("E-1", "Rent"),
            "<AccountRet><ListID>E-2</ListID><Name>Utilities</Name><Sublevel>0</Sublevel>"
            "<AccountType>Expense</AccountType><Balance>120</Balance></AccountRet>"});
  Spend("9999-10-01", "5");
  ImportExpenseBalances(surroundings.context, {.year = 9999, .month = 10});
  EXPECT_EQ(surroundings.Expense("Rent", 1), 5);
  EXPECT_EQ(surroundings.journal->Count("ProcessRequest 12 9999-11-01 9999-11-30"), 1);
  EXPECT_EQ(surroundings.journal->Count("ProcessRequest 10 9999-12-01 9999-12-31"), 0);
  EXPECT_EQ(surroundings.journal->Count("ProgressBarChange 25 Importing expense balances..."), 1);
  EXPECT_EQ(surroundings.journal->Count("ProgressBarChange 33 Importing expense balances..."), 0);
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::typeMismatch));
  EXPECT_EQ(surroundings.SumOfAll(), 5) << "a pass that ended spreads no balance";
}

TEST_F(MonthlyPasses, EndAtASinksErrorAndKeepEarlierMonths) {
  Spend("2003-11-01", "1");
  Spend("2003-12-01", "2");
  surroundings.journal->Fail("ProgressBarChange 17 Importing expense balances...", Error(17, "sink"));
  ImportExpenseBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(surroundings.SumOfAll(), 1);
  EXPECT_EQ(surroundings.errorPair.number, 0);
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, 17));
}

TEST_F(MonthlyPasses, ContinueAfterARefusedRequest) {
  Spend("2003-11-01", "1");
  Spend("2003-12-01", "2");
  surroundings.journal->Fail("ProcessRequest 10 2003-11-01 2003-11-30", Error(-2147220477, "unexpected"));
  ImportExpenseBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(surroundings.Expense("Rent", 2), 2);
  EXPECT_EQ(surroundings.SumOfAll(), 2);
  EXPECT_EQ(surroundings.journal->Count("ProcessRequest 12 2004-10-01 2004-10-31"), 1);
}

TEST_F(MonthlyPasses, ForExpensesSpreadBalancesAfterTheLastMonth) {
  const std::string account =
      "<AccountRet><ListID>E-9</ListID><Name>Utilities</Name><Sublevel>0</Sublevel>"
      "<AccountType>Expense</AccountType><Balance>600.00</Balance></AccountRet>";
  surroundings.state.expenseAccounts =
      fakes::ImportSurroundings::List("4", {fakes::Account("E-1", "Rent"), account});
  Spend("2004-02-01", "7");
  ImportExpenseBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(Months(surroundings.state.expenseSubtotals->At("Utilities")),
            (std::vector<double>{150, 150, 150, 150, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(RentByMonth(), (std::vector<double>{0, 0, 0, 7, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(MonthlyPasses, ForIncomeSpreadNoBalances) {
  surroundings.state.expenseAccounts = fakes::ImportSurroundings::List(
      "4", {"<AccountRet><ListID>E-1</ListID><Name>Rent</Name><Sublevel>0</Sublevel>"
            "<AccountType>Expense</AccountType><Balance>600.00</Balance></AccountRet>"});
  surroundings.state.incomeAccounts = fakes::ImportSurroundings::List(
      "1", {"<AccountRet><ListID>I-1</ListID><Name>Plants</Name><Sublevel>0</Sublevel>"
            "<AccountType>Income</AccountType><Balance>600.00</Balance></AccountRet>"});
  ImportIncomeBalances(surroundings.context, {.year = 2003, .month = 11});
  EXPECT_EQ(surroundings.SumOfAll(), 0);
}

}  // namespace
}  // namespace krnqb
