#include <gtest/gtest.h>

#include <string>

#include "fakes/amounts_host.h"

// Whole imports in which an event handler changes the options.

namespace krnqb {
namespace {

constexpr auto firstExpenseProgress = "ProgressBarChange 8 Importing expense balances...";
constexpr auto lastExpenseProgress = "ProgressBarChange 100 Importing expense balances...";

class GoWithChangedOptions : public testing::Test {
 protected:
  GoWithChangedOptions() { host.IncludeAccounts(); }

  int Asked(const std::string& question) const { return host.journal->Count("ProcessRequest " + question); }
  bool WasAskedAnything(const std::string& number) const {
    return host.journal->Text().find("ProcessRequest " + number + " ") != std::string::npos;
  }

  fakes::AmountsHost host;
};

TEST_F(GoWithChangedOptions, ReadsNoReportsWhenTheVersionChangesDuringTheTransactions) {
  host.journal->On(firstExpenseProgress, [this] { host.component.QBMajorVersion(2); });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.QBMajorVersion(), 2);
  EXPECT_EQ(Asked("21 2002-12-01 2002-12-31"), 1);
  for (const char* number : {"300", "310", "320"}) EXPECT_FALSE(WasAskedAnything(number)) << number;
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST_F(GoWithChangedOptions, CollectsPastPerformanceWithTheVersionReadBeforeTheAmounts) {
  host.component.IncludePastPerformance(true);
  host.quickBooks->answers["60"] = fakes::AccountAnswer(
      "60", {"<AccountRet><Name>Seeds</Name><Sublevel>0</Sublevel><AccountType>CostOfGoodsSold</AccountType>"
             "<TotalBalance>5</TotalBalance></AccountRet>"});
  host.journal->On(firstExpenseProgress, [this] { host.component.QBMajorVersion(2); });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(Asked("60"), 1);
  EXPECT_EQ(Asked("20 2000-01-01 2000-01-31"), 1) << "the first past year from transactions";
  for (const char* number : {"300", "310", "320", "330"}) EXPECT_FALSE(WasAskedAnything(number)) << number;
}

TEST_F(GoWithChangedOptions, UsesTheVersionSetBeforeTheAmountsAreRead) {
  host.journal->OnOccurrence("ProgressBarChange 100 Processing...", 2,
                             [this] { host.component.QBMajorVersion(2); });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(Asked("300 2002-01-01 2002-12-31"), 1);
  EXPECT_FALSE(WasAskedAnything("10"));
}

TEST_F(GoWithChangedOptions, ReadsIncomeFromTheStartSetDuringTheExpenses) {
  host.journal->On(firstExpenseProgress, [this] {
    host.component.StartingMonth(7);
    host.component.StartingYear(2001);
  });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(Asked("10 2002-01-01 2002-01-31"), 1);
  EXPECT_EQ(Asked("10 2002-12-01 2002-12-31"), 1) << "the expenses keep their start";
  EXPECT_EQ(Asked("20 2001-07-01 2001-07-31"), 1);
  EXPECT_EQ(Asked("20 2002-06-01 2002-06-30"), 1);
  EXPECT_EQ(Asked("20 2002-07-01 2002-07-31"), 0);
}

TEST_F(GoWithChangedOptions, SettlesAgainAStartClearedDuringTheExpenses) {
  host.journal->On(lastExpenseProgress, [this] {
    host.component.KRNStartingYear(2000);
    host.component.StartingYear(0);
  });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(Asked("10 2002-12-01 2002-12-31"), 1);
  EXPECT_EQ(Asked("20 1999-01-01 1999-01-31"), 1);
  EXPECT_EQ(host.component.Options().period.startingYear, 1999);
}

}  // namespace
}  // namespace krnqb
