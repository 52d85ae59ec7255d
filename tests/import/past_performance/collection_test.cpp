#include "import/past_performance/collection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "import/past_performance/fixture.h"

// With qbXML 1.x, the periods are read from transactions.

namespace krnqb {
namespace {

using fakes::Amount;
using fakes::Element;
using tests::CollectingPastPerformance;
using tests::TypedAccount;

class PastTransactions : public CollectingPastPerformance {
 protected:
  void Sell(const std::string& firstDay, const std::string& amount) {
    surroundings.quickBooks->answers["20 " + firstDay] = fakes::RecordAnswer(
        "InvoiceQueryRs",
        Element("InvoiceRet", Element("InvoiceLineRet", fakes::ItemRef("IT-1") + Amount(amount))));
  }
  int Asked(const std::string& question) const {
    return surroundings.journal->Count("ProcessRequest " + question);
  }
};

TEST_F(PastTransactions, YieldTheIncomeOfThreeFiscalYears) {
  Sell("2000-04-01", "1");
  Sell("2001-03-01", "2");
  Sell("2001-04-01", "4");
  Sell("2002-12-01", "8");
  Sell("2003-03-01", "16");
  Sell("2003-04-01", "32");
  Collect();
  EXPECT_EQ(Periods("Income"), First({3, 4, 24}));
  EXPECT_EQ(surroundings.Income("Plants", 9), 8) << "the subtotals hold the last period";
}

TEST_F(PastTransactions, ReportSkippedAmountsWithThePeriod) {
  surroundings.SetItems("");
  Sell("2000-05-01", "1");
  Sell("2002-05-01", "2");
  Collect();
  const std::vector<Notice> amounts = surroundings.SkippedAmounts();
  ASSERT_EQ(amounts.size(), 2U);
  EXPECT_EQ(amounts[0].place.pastPeriod, 1);
  EXPECT_EQ(amounts[1].place.pastPeriod, 3);
}

TEST_F(PastTransactions, YieldNoExpensesOrCosts) {
  surroundings.SetItems(fakes::InventoryItem("IT-1", "I-1", "C-1", "2.5"));
  Sell("2000-04-01", "100");
  surroundings.quickBooks->answers["10"] = fakes::RecordAnswer(
      "BillQueryRs", Element("BillRet", fakes::ExpenseLine(fakes::AccountRef("E-1") + Amount("5"))));
  Collect();
  EXPECT_EQ(Periods("Income"), First({100}));
  EXPECT_EQ(Periods("Expense"), First({}));
  EXPECT_EQ(Periods("CostOfGoodsSold"), First({}));
}

TEST_F(PastTransactions, RequestExpensesOfTheImportedYearAndIncomeOfThePeriods) {
  surroundings.state.options.period.startingYear = 1999;
  Collect();
  EXPECT_EQ(Asked("10 1999-04-01 1999-04-30"), 3);
  EXPECT_EQ(Asked("12 2000-03-01 2000-03-31"), 3);
  EXPECT_EQ(Asked("10 2000-04-01 2000-04-30"), 0);
  for (const std::string year : {"2000", "2001", "2002"}) {
    EXPECT_EQ(Asked("20 " + year + "-04-01 " + year + "-04-30"), 1) << year;
    EXPECT_EQ(Asked("21 " + year + "-12-01 " + year + "-12-31"), 1) << year;
  }
  EXPECT_EQ(Asked("20 2003-04-01 2003-04-30"), 0);
}

TEST_F(PastTransactions, RequestExpensesOfTheYearBeforeThePlansByDefault) {
  surroundings.state.options.period.startingYear = 0;
  Collect();
  EXPECT_EQ(Asked("10 2002-04-01 2002-04-30"), 3);
  EXPECT_EQ(surroundings.state.options.period.startingYear, 2002);
}

TEST_F(PastTransactions, RequestExpensesBeforeIncomeInEachPeriod) {
  Collect();
  const std::string journal = surroundings.journal->Text();
  const auto firstIncome = journal.find("ProcessRequest 20 2000-04-01");
  const auto lastExpense = journal.find("ProcessRequest 12 2003-03-01");
  const auto secondPeriod = journal.find("ProcessRequest 10 2002-04-01", firstIncome);
  EXPECT_TRUE(journal.starts_with("ProcessRequest 60\nProgressBarChange 8 Importing expense balances...\n"));
  EXPECT_LT(lastExpense, firstIncome);
  EXPECT_LT(firstIncome, secondPeriod);
  EXPECT_LT(secondPeriod, journal.find("ProcessRequest 20 2001-04-01"));
}

TEST_F(PastTransactions, FillOnlyTheTwoYearsAndTheLastOfFourteenPeriods) {
  surroundings.state.options.krnProduct = QBKRN_COR;
  surroundings.state.options.period.startingYear = 1999;
  Sell("2000-05-01", "1");
  Sell("2001-05-01", "2");
  Sell("2002-05-01", "4");
  Sell("2003-03-01", "8");
  Sell("2004-02-01", "16");
  Sell("2004-03-01", "32");
  Collect();
  auto expected = First({1, 2});
  expected[13] = 8 + 16;
  EXPECT_EQ(Periods("Income"), expected);
  EXPECT_EQ(Asked("20 2002-05-01 2002-05-31"), 0);
  EXPECT_EQ(Asked("10 1999-04-01 1999-04-30"), 2 + 1);
  EXPECT_EQ(Asked("10 1999-03-01 1999-03-31"), 1) << "the last period begins in March";
}

TEST_F(PastTransactions, StartEachPeriodAtZero) {
  surroundings.state.expenseSubtotals = fakes::ImportSurroundings::Zeros({"Old"});
  surroundings.state.incomeSubtotals = fakes::ImportSurroundings::Zeros({"Old"});
  surroundings.state.incomeSubtotals->At("Old").SubTotal(1, 500);
  surroundings.state.costSubtotals.reset();
  Sell("2000-04-01", "1");
  Collect();
  EXPECT_EQ(Periods("Income"), First({1}));
  EXPECT_EQ(surroundings.state.expenseSubtotals->Count(), 2U);
  EXPECT_EQ(surroundings.state.incomeSubtotals->Find("Old"), nullptr);
  EXPECT_TRUE(surroundings.state.costSubtotals);
}

TEST_F(PastTransactions, NeedNoExpenseAccounts) {
  surroundings.state.expenseAccounts = AccountList();
  Sell("2002-04-01", "1");
  Collect();
  EXPECT_EQ(Periods("Income"), First({0, 0, 1}));
}

TEST_F(PastTransactions, EndWithoutIncomeAccounts) {
  surroundings.state.incomeAccounts = AccountList();
  Collect();
  EXPECT_EQ(Periods("Income"), First({}));
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::objectNotSet));
  EXPECT_EQ(Asked("20 2001-04-01 2001-04-30"), 0);
}

TEST_F(PastTransactions, EndInTheFirstPeriodWithoutCostOfGoodsSold) {
  SetAccounts(TypedAccount("Bank", "Checking", "100"));
  Sell("2000-04-01", "1");
  Sell("2001-04-01", "2");
  Collect();
  EXPECT_EQ(Periods("Income"), First({1}));
  EXPECT_EQ(Periods("Bank"), First({100, 100, 100}));
  EXPECT_EQ(surroundings.state.pastPerformance->Find("CostOfGoodsSold"), nullptr);
  EXPECT_EQ(Asked("20 2001-04-01 2001-04-30"), 0);
  ASSERT_EQ(surroundings.NoticesOf(NoticeKind::PastPerformanceEnded), 1U);
  for (const Notice& notice : surroundings.observer.notices) {
    if (notice.kind != NoticeKind::PastPerformanceEnded) continue;
    EXPECT_EQ(notice.description, "CostOfGoodsSold");
    EXPECT_EQ(notice.place.operation, Operation::CollectPastPerformance);
  }
}

TEST_F(PastTransactions, ContinueIfAPassFails) {
  surroundings.state.options.period.krnStartingMonth = 13;
  Collect();
  EXPECT_EQ(Periods("Income"), First({}));
  EXPECT_EQ(surroundings.NoticesOf(NoticeKind::OperationEnded), 6U) << "two passes in each of three periods";
  EXPECT_EQ(surroundings.NoticesOf(NoticeKind::PastPerformanceEnded), 0U);
}

TEST_F(PastTransactions, ContinueIfASinkEndsAPass) {
  Sell("2001-04-01", "1");
  Sell("2002-06-01", "2");
  surroundings.journal->Fail("ProgressBarChange 17 Importing income balances...", Error(17, "sink"));
  Collect();
  EXPECT_EQ(Periods("Income"), First({0, 1, 0})) << "only the first month of each year";
  EXPECT_EQ(surroundings.NoticesOf(NoticeKind::OperationEnded), 3U);
}

TEST_F(PastTransactions, ClearTheBillableExpensesInEachExpensePass) {
  surroundings.state.billableExpenses->Add({.account = "E-1"}, "K-1,75.00");
  Collect();
  EXPECT_EQ(surroundings.state.billableExpenses->Count(), 0U);
}

TEST_F(PastTransactions, AreNotRequestedIfTheYearsLeaveSixteenBits) {
  surroundings.state.options.period.krnStartingYear = -32765;
  Collect();
  EXPECT_EQ(surroundings.journal->Text(), "ProcessRequest 60\n");
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::overflow));
  EXPECT_EQ(Types().size(), 6U);
}

TEST_F(PastTransactions, AreNotRequestedWithAnyOtherVersion) {
  surroundings.sessionState.qbMajorVersion = 3;
  Collect();
  EXPECT_EQ(surroundings.journal->Text(), "ProcessRequest 60\n");
  for (const char* type : {"Income", "Expense", "CostOfGoodsSold"}) EXPECT_EQ(Periods(type), First({}));
  EXPECT_TRUE(surroundings.observer.notices.empty());
}

TEST_F(PastTransactions, EndInTheFirstPeriodWithoutExpenseAccountsWithALaterVersion) {
  surroundings.sessionState.qbMajorVersion = 3;
  surroundings.state.expenseAccounts = AccountList();
  Collect();
  EXPECT_EQ(surroundings.journal->Text(), "ProcessRequest 60\n");
  ASSERT_EQ(surroundings.NoticesOf(NoticeKind::OperationEnded), 2U) << "the subtotals and the collection";
  const Notice& last = surroundings.observer.notices.back();
  EXPECT_EQ(last.place.operation, Operation::CollectPastPerformance);
  EXPECT_EQ(last.number, error_number::objectNotSet);
}

TEST_F(PastTransactions, EndWithAnIncomeOfZeroIfTwoIncomeAccountsHaveTheSameName) {
  SetAccounts(tests::costAccount + TypedAccount("Income", "Plants", "50"));
  surroundings.state.incomeAccounts = fakes::ImportSurroundings::List(
      "1", {fakes::Account("I-1", "Plants"), fakes::Account("I-2", "plants")});
  Collect();
  EXPECT_EQ(Periods("Income"), First({0, 50, 50})) << "periods not reached keep their balances";
}

TEST_F(PastTransactions, FollowAProductThatChangesToCOR) {
  Sell("2000-04-01", "1");
  Sell("2001-04-01", "2");
  Sell("2002-04-01", "4");
  surroundings.journal->OnOccurrence("ProgressBarChange 100 Importing income balances...", 2,
                                     [this] { surroundings.state.options.krnProduct = QBKRN_COR; });
  Collect();
  EXPECT_EQ(Periods("Income"), First({1, 2})) << "the third period is now a month, which has no transactions";
}

}  // namespace
}  // namespace krnqb
