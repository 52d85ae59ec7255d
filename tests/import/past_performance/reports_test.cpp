#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "import/past_performance/fixture.h"

// With qbXML 2.0, the periods are read from reports.

namespace krnqb {
namespace {

using fakes::ReportAnswer;
using fakes::ReportRow;
using tests::CollectingPastPerformance;
using tests::costAccount;
using tests::TypedAccount;

const char* const accountTypes[] = {
    "Bank",         "AccountsReceivable", "OtherAsset", "OtherCurrentAsset",     "FixedAsset",
    "Depreciation", "AccountsPayable",    "CreditCard", "OtherCurrentLiability", "LongTermLiability",
    "Equity",       "RetainedEarnings"};
const char* const typePercents[] = {"8", "17", "25", "33", "42", "50", "58", "67", "75", "83", "92", "100"};

class PastReports : public CollectingPastPerformance {
 protected:
  PastReports() {
    surroundings.sessionState.qbMajorVersion = 2;
    SetAccounts(costAccount + TypedAccount("Bank", "Checking", "999"));
  }

  void Report(const std::string& question, const std::string& rows) {
    surroundings.quickBooks->answers[question] = ReportAnswer(rows);
  }
  static std::string ProfitAndLoss(const std::string& from, const std::string& to) {
    std::string lines;
    for (const std::string number : {"300", "320", "310"}) {
      lines += "ProcessRequest " + number + " " + from + " " + to + "\n";
    }
    return lines;
  }
};

TEST_F(PastReports, RequestThreeReportsAndTheBalanceSheetOfThreeYears) {
  Collect();
  std::string expected = "ProcessRequest 60\n";
  for (const auto& [from, to] : {std::pair("2000-04-01", "2001-03-31"), std::pair("2001-04-01", "2002-03-31"),
                                 std::pair("2002-04-01", "2003-03-31")}) {
    expected += ProfitAndLoss(from, to);
    for (std::size_t i = 0; i < std::size(accountTypes); ++i) {
      expected += std::string("ProgressBarChange ") + typePercents[i] + " Processing...\n";
      expected += std::string("ProcessRequest 330 ") + accountTypes[i] + " " + to + " " + to + "\n";
    }
  }
  EXPECT_EQ(surroundings.journal->Text(), expected);
}

TEST_F(PastReports, RequestTwoYearsAndTwelveMonthsForCOR) {
  struct Period {
    const char* from;
    const char* to;
    const char* percent;
  };
  static constexpr Period periods[] = {
      {"2000-04-01", "2001-03-31", "13"}, {"2001-04-01", "2002-03-31", "20"},
      {"2002-04-01", "2002-04-30", "27"}, {"2002-05-01", "2002-05-31", "33"},
      {"2002-06-01", "2002-06-30", "40"}, {"2002-07-01", "2002-07-31", "47"},
      {"2002-08-01", "2002-08-31", "53"}, {"2002-09-01", "2002-09-30", "60"},
      {"2002-10-01", "2002-10-31", "67"}, {"2002-11-01", "2002-11-30", "73"},
      {"2002-12-01", "2002-12-31", "80"}, {"2003-01-01", "2003-01-31", "87"},
      {"2003-02-01", "2003-02-28", "93"}, {"2003-03-01", "2003-03-31", "100"}};
  surroundings.state.options.krnProduct = QBKRN_COR;
  Collect();
  std::string expected = "ProcessRequest 60\n";
  for (const auto& [from, to, percent] : periods) {
    expected += ProfitAndLoss(from, to) + "ProgressBarChange " + percent + " Processing...\n";
    for (const char* type : accountTypes) {
      expected += std::string("ProcessRequest 330 ") + type + " " + to + " " + to + "\n";
    }
  }
  EXPECT_EQ(surroundings.journal->Text(), expected);
}

TEST_F(PastReports, FollowAProductThatChangesToCORButKeepTheNumberOfPeriods) {
  surroundings.journal->On("ProcessRequest 310 2000-04-01 2001-03-31",
                           [this] { surroundings.state.options.krnProduct = QBKRN_COR; });
  Collect();
  std::string expected = "ProcessRequest 60\n";
  const char* const periods[][3] = {{"2000-04-01", "2001-03-31", "50"},
                                    {"2001-04-01", "2002-03-31", "75"},
                                    {"2002-04-01", "2002-04-30", "100"}};
  for (const auto& [from, to, percent] : periods) {
    expected += ProfitAndLoss(from, to) + "ProgressBarChange " + percent + " Processing...\n";
    for (const char* type : accountTypes) {
      expected += std::string("ProcessRequest 330 ") + type + " " + to + " " + to + "\n";
    }
  }
  EXPECT_EQ(surroundings.journal->Text(), expected);
}

TEST_F(PastReports, RemainMonthsIfTheProductChangesFromCORAfterTheFirst) {
  surroundings.state.options.krnProduct = QBKRN_COR;
  surroundings.journal->On("ProcessRequest 310 2002-04-01 2002-04-30",
                           [this] { surroundings.state.options.krnProduct = QBKRN_ALD; });
  Collect();
  EXPECT_FALSE(WasRequested("300 2002-05-01 2002-05-31"));
  for (const std::string year : {"2003", "2008", "2013"}) {
    EXPECT_TRUE(WasRequested("300 " + year + "-04-01 " + year + "-04-30")) << year;
  }
}

TEST_F(PastReports, YieldTheTotalsOfEachPeriod) {
  Report("300 2000-04-01", ReportRow("Plants", {"1", "2", "4"}) + ReportRow("Tools", {"8"}));
  Report("300 2002-04-01", ReportRow("Tools", {"-16"}));
  Report("320 2001-04-01", ReportRow("Seeds", {"32"}) + ReportRow("Freight", {"64"}));
  Report("310 2002-04-01", ReportRow("Rent", {"128"}) + ReportRow("6100 · Utilities", {"256", "512"}));
  Collect();
  EXPECT_EQ(Periods("Income"), First({15, 0, -16}));
  EXPECT_EQ(Periods("CostOfGoodsSold"), First({0, 96}));
  EXPECT_EQ(Periods("Expense"), First({0, 0, 896}));
  EXPECT_EQ(Periods("CostOfGoodSold"), First({}));
  EXPECT_EQ(surroundings.Expense("Utilities", 2), 512) << "the subtotals hold the last period";
  EXPECT_EQ(surroundings.Income("Plants", 1), 0);
}

TEST_F(PastReports, YieldTheBalanceSheetOfEachPeriodInsteadOfTodaysBalances) {
  Report("330 Bank 2001-03-31", ReportRow("Checking", {"100"}) + ReportRow("Savings", {"10"}));
  Report("330 Bank 2003-03-31", ReportRow("Checking", {"-7"}));
  Report("330 RetainedEarnings", ReportRow("Retained Earnings", {"3"}));
  Report("330 Equity", ReportRow("Capital", {"3"}));
  Collect();
  EXPECT_EQ(Periods("Bank"), First({110, 0, -7}));
  EXPECT_EQ(Periods("RetainedEarnings"), First({3, 3, 3}));
  EXPECT_EQ(surroundings.state.pastPerformance->Find("Equity"), nullptr) << "the company has no such type";
}

TEST_F(PastReports, YieldFourteenPeriodsForCOR) {
  surroundings.state.options.krnProduct = QBKRN_COR;
  Report("300", ReportRow("Plants", {"1"}));
  Report("300 2003-03-01", ReportRow("Plants", {"5"}));
  Report("330 Bank 2003-02-28", ReportRow("Checking", {"9"}));
  Collect();
  EXPECT_EQ(Periods("Income"), (std::vector<double>{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 5}));
  EXPECT_EQ(Periods("Bank"), (std::vector<double>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9, 0}));
}

TEST_F(PastReports, EndInTheFirstPeriodWithoutExpenseAccounts) {
  surroundings.state.expenseAccounts = AccountList();
  Report("300", ReportRow("Plants", {"1"}));
  Report("310", ReportRow("Rent", {"2"}));
  Collect();
  EXPECT_EQ(Periods("Income"), First({1}));
  EXPECT_EQ(Periods("Expense"), First({}));
  EXPECT_EQ(surroundings.journal->Text(), "ProcessRequest 60\n" + ProfitAndLoss("2000-04-01", "2001-03-31"));
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::objectNotSet));
  EXPECT_EQ(surroundings.errorPair.number, 0);
}

TEST_F(PastReports, EndInTheFirstPeriodWithoutCostAccounts) {
  surroundings.state.costAccounts = AccountList();
  Report("310", ReportRow("Rent", {"2"}));
  Collect();
  EXPECT_EQ(Periods("Expense"), First({2}));
  EXPECT_EQ(Periods("CostOfGoodsSold"), First({}));
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::objectNotSet));
}

TEST_F(PastReports, EndInTheFirstPeriodWithoutCostOfGoodsSold) {
  SetAccounts(TypedAccount("Bank", "Checking", "0"));
  Report("300", ReportRow("Plants", {"1"}));
  Report("310", ReportRow("Rent", {"2"}));
  Collect();
  EXPECT_EQ(Periods("Income"), First({1}));
  EXPECT_EQ(Periods("Expense"), First({2}));
  EXPECT_EQ(surroundings.journal->Text(), "ProcessRequest 60\n" + ProfitAndLoss("2000-04-01", "2001-03-31"));
  EXPECT_EQ(surroundings.NoticesOf(NoticeKind::PastPerformanceEnded), 1U);
}

TEST_F(PastReports, EndAtAMalformedAnswerAndKeepEarlierFigures) {
  Report("300", ReportRow("Plants", {"1"}));
  surroundings.quickBooks->answers["320 2001-04-01"] = "no document";
  Collect();
  EXPECT_EQ(Periods("Income"), First({1})) << "the second period's figures were not reached";
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::objectNotSet));
  surroundings.quickBooks->answers.erase("320 2001-04-01");
  surroundings.quickBooks->answers["330 Equity 2002-03-31"] = "no document";
  Report("330 Bank", ReportRow("Checking", {"7"}));
  Collect();
  EXPECT_EQ(Periods("Income"), First({1, 1}));
  EXPECT_EQ(Periods("Bank"), First({7, 7}));
}

TEST_F(PastReports, EndAtARefusedRequestOrASinksError) {
  Report("300", ReportRow("Plants", {"1"}));
  surroundings.journal->Fail("ProcessRequest 310 2001-04-01 2002-03-31", Error(-2147220477, "unexpected"));
  Collect();
  EXPECT_EQ(Periods("Income"), First({1}));
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, -2147220477));
  surroundings.journal->Heal();
  surroundings.journal->FailOccurrence("ProgressBarChange 17 Processing...", 2, Error(17, "sink"));
  Collect();
  EXPECT_EQ(Periods("Income"), First({1, 1}));
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, 17));
  EXPECT_EQ(surroundings.errorPair.number, 0);
}

TEST_F(PastReports, EndAtAYearOutsideTheCalendar) {
  surroundings.state.options.period.krnStartingYear = 101;
  Collect();
  EXPECT_EQ(surroundings.journal->Text(), "ProcessRequest 60\n");
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::typeMismatch));
}

}  // namespace
}  // namespace krnqb
