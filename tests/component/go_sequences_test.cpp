#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/test_host.h"

// Each test compares every request to QuickBooks, every call of the plan and every event, from start to end.

namespace krnqb {
namespace {

using expected::Asks;
using expected::FindsSession;
using expected::Lines;
using expected::Progress;
using expected::Sequence;
using fakes::TestHost;

const QBKRN_BalancesImport allBalances[] = {BalImport_Planned, BalImport_Actual, BalImport_All};

TEST(Go, WithNothingToImportClosesTheSessionAndReturnsTrue) {
  TestHost host;
  host.component.BalancesImport(BalImport_All);
  host.component.QBCompany();
  host.journal->Clear();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), "processor released\n");
  EXPECT_EQ(host.component.ErrorNumber(), 0);
  host.journal->Clear();
  EXPECT_TRUE(host.component.Go()) << "also without a session";
  EXPECT_EQ(host.journal->Text(), "");
}

TEST(Go, WithNothingToImportClearsTheStoredPath) {
  TestHost host;
  host.component.QBCompany("D:\\Mine.qbw");
  host.component.Go();
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), expected::OpensSession());
}

TEST(Go, ImportsExpenseAccountsWithoutBalancesInOnePass) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            "ProgressBarChange 20 Processing...\n"
            "create processor\n"
            "OpenConnection KRN6_QB2002.dll, Korrin Software Data Exchange Component\n"
            "BeginSession \"\" 2\n"
            "ProcessRequest 101\n"
            "GetCurrentCompanyFileName\n"
            "ProcessRequest 100\n"
            "GetCurrentCompanyFileName\n"
            "MajorVersion\n"
            "MinorVersion\n"
            "ProgressBarChange 40 Processing...\n"
            "GetCurrentCompanyFileName\n"
            "ProcessRequest 100\n"
            "ProgressBarChange 60 Processing...\n"
            "GetCurrentCompanyFileName\n"
            "ProcessRequest 4\n"
            "ProgressBarChange 80 Processing...\n"
            "Data\n"
            "tables 20..0600\n"
            "Serialize\n"
            "Data\n"
            "tables 21..0600\n"
            "Serialize\n"
            "ProgressBarChange 100 Processing...\n"
            "Data\n"
            "Deserialize 20..0600 21..0600\n"
            "AfterImport\n"
            "processor released\n");
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST(Go, ImportsIncomeAccountsWithoutBalancesAndLoadsThemTwice) {
  TestHost host;
  host.component.IncludeIncomeAccounts(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), Asks("1"), Progress(80), Progress(100),
                      expected::ReadsSalesTables(), expected::LoadsSalesTables(),
                      expected::LoadsSalesTables(), expected::EndsImport()}));
  ASSERT_EQ(host.planContent->loaded.size(), 2U);
  EXPECT_EQ(host.planContent->loaded[0], host.planContent->loaded[1])
      << "what the plan leaves in its argument is not read";
}

TEST(Go, ImportsBothGroupsWithoutBalances) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludeIncomeAccounts(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), Asks("4"), Asks("1"), Progress(80),
                      expected::ReadsExpenseTables(), Progress(100), expected::ReadsSalesTables(),
                      expected::LoadsSalesTables(), expected::LoadsExpenseTables(),
                      expected::LoadsSalesTables(), expected::EndsImport()}));
}

TEST(Go, WithPastPerformanceOnlyAndNoBalancesChangesNothing) {
  TestHost host;
  host.component.IncludePastPerformance(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass(), Asks("1"), Progress(80),
                                            Progress(100), expected::EndsImport()}));
}

TEST(Go, ImportsExpenseAccountsWithBalancesInTwoPasses) {
  for (const QBKRN_BalancesImport balances : allBalances) {
    TestHost host;
    host.component.KRNStartingMonth(1);
    host.component.KRNStartingYear(2003);
    host.component.IncludeExpenseAccounts(true);
    host.component.BalancesImport(balances);
    EXPECT_TRUE(host.component.Go());
    const std::string pass =
        Sequence({Asks("4"), Asks("50"), Progress(80), expected::ReadsExpenseTables(), Progress(100)});
    EXPECT_EQ(host.journal->Text(),
              Sequence({expected::BeginsFirstPass(), pass, expected::LoadsExpenseTables(), "XMLprocessing\n",
                        expected::BeginsPassInOpenSession(), pass, expected::ReadsTransactions(),
                        expected::LoadsExpenseTables(), expected::EndsImport()}));
  }
}

TEST(Go, ImportsIncomeAccountsWithBalancesInTwoPassesAndLoadsThemFourTimes) {
  for (const QBKRN_BalancesImport balances : allBalances) {
    TestHost host;
    host.component.KRNStartingMonth(1);
    host.component.KRNStartingYear(2003);
    host.component.IncludeIncomeAccounts(true);
    host.component.BalancesImport(balances);
    EXPECT_TRUE(host.component.Go());
    const std::string pass =
        Sequence({Asks("1"), Asks("2"), Asks("50"), Progress(80), Progress(100), expected::ReadsSalesTables(),
                  expected::LoadsSalesTables(), expected::ReadsSalesTables()});
    EXPECT_EQ(host.journal->Text(),
              Sequence({expected::BeginsFirstPass(), pass, expected::LoadsSalesTables(), "XMLprocessing\n",
                        expected::BeginsPassInOpenSession(), pass, expected::ReadsTransactions(),
                        expected::LoadsSalesTables(), expected::EndsImport()}));
    EXPECT_EQ(host.planContent->loaded.size(), 4U);
  }
}

TEST(Go, ImportsBothGroupsWithBalancesInTwoPasses) {
  TestHost host;
  host.component.KRNStartingMonth(1);
  host.component.KRNStartingYear(2003);
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludeIncomeAccounts(true);
  host.component.BalancesImport(BalImport_All);
  EXPECT_TRUE(host.component.Go());
  const std::string pass =
      Sequence({expected::AsksAllLists(), Progress(80), expected::ReadsExpenseTables(), Progress(100),
                expected::ReadsSalesTables(), expected::LoadsSalesTables(), expected::ReadsSalesTables()});
  const std::string loads = expected::LoadsExpenseTables() + expected::LoadsSalesTables();
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass(), pass, loads, "XMLprocessing\n",
                                            expected::BeginsPassInOpenSession(), pass,
                                            expected::ReadsTransactions(), loads, expected::EndsImport()}));
}

TEST(Go, WithPastPerformanceAndBalancesRewritesItsTableInTheSecondPass) {
  TestHost host;
  host.component.KRNStartingMonth(1);
  host.component.KRNStartingYear(2003);
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludePastPerformance(true);
  host.component.BalancesImport(BalImport_Actual);
  EXPECT_TRUE(host.component.Go());
  const std::string pass =
      Sequence({expected::AsksAllLists(), Progress(80), expected::ReadsExpenseTables(), Progress(100)});
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass(), pass, expected::LoadsExpenseTables(),
                                            "XMLprocessing\n", expected::BeginsPassInOpenSession(), pass,
                                            expected::ReadsTransactions(), expected::WritesFirstPastPeriod(),
                                            expected::LoadsExpenseTables(), expected::EndsImport()}));
}

TEST(Go, WithPastPerformanceOnlyAndBalancesReadsThePastPeriods) {
  TestHost host;
  host.component.KRNStartingMonth(1);
  host.component.KRNStartingYear(2003);
  host.component.IncludePastPerformance(true);
  host.component.BalancesImport(BalImport_All);
  EXPECT_TRUE(host.component.Go());
  const std::string pass = Sequence({Asks("1"), Asks("2"), Asks("50"), Progress(80), Progress(100)});
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass(), pass, "XMLprocessing\n",
                                            expected::BeginsPassInOpenSession(), pass,
                                            expected::WritesFirstPastPeriod(), expected::EndsImport()}));
}

TEST(Go, OpensTheCompanyThatTheHostNamed) {
  TestHost host;
  host.component.IncludePastPerformance(true);
  host.component.QBCompany("D:\\Mine.qbw");
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass("D:\\Mine.qbw"), Asks("1"),
                                            Progress(80), Progress(100), expected::EndsImport()}));
}

TEST(Go, AddsTheNewAccountsToThePlan) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludeIncomeAccounts(true);
  host.component.BalancesImport(BalImport_Planned);
  EXPECT_TRUE(host.component.Go());
  const std::string expenses = host.planContent->tables[fakes::TableId("20", "0600")];
  for (const char* name : {"<c>Rent</c>", "<c>Utilities</c>"})
    EXPECT_TRUE(fakes::Holds(expenses, name)) << name;
  EXPECT_FALSE(fakes::Holds(expenses, "<c>Gas</c>")) << "a sub-account gets no row";
  const std::string sales = host.planContent->tables[fakes::TableId("20", "0400")];
  for (const char* name : {"<c>Plants</c>", "<c>Tools</c>", "<c>Seeds</c>", "<c>Freight</c>"}) {
    EXPECT_TRUE(fakes::Holds(sales, name)) << name;
  }
}

TEST(Go, AddsNoRowWhenTheCompanyIsImportedAgain) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludeIncomeAccounts(true);
  EXPECT_TRUE(host.component.Go());
  const auto tables = host.planContent->tables;
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.planContent->tables, tables);
}

TEST(Go, WithoutBalancesReusesTheCostAccountsOfAnEarlierImport) {
  TestHost host;
  host.component.IncludeIncomeAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  EXPECT_TRUE(host.component.Go());
  host.component.BalancesImport(BalImport_None);
  host.quickBooks->answers["2"] = fakes::AccountAnswer("2", {fakes::Account("C-9", "Packaging")});
  host.journal->Clear();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({Progress(20), expected::Connects(), "BeginSession \"\" 2\n", expected::ReadsCompany(),
                      Progress(40), Asks("100"), Progress(60), Asks("1"), Progress(80), Progress(100),
                      expected::ReadsSalesTables(), expected::LoadsSalesTables(),
                      expected::ReadsSalesTables(), expected::LoadsSalesTables(), expected::EndsImport()}));
  const std::string sales = host.planContent->tables[fakes::TableId("20", "0400")];
  EXPECT_TRUE(fakes::Holds(sales, "<c>Seeds</c>"));
  EXPECT_FALSE(fakes::Holds(sales, "<c>Packaging</c>")) << "the cost accounts were not requested again";
}

TEST(Go, LoadsAnEmptyTextForAListThatDoesNotParse) {
  TestHost host;
  host.component.KRNStartingMonth(1);
  host.component.KRNStartingYear(2003);
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  host.quickBooks->answers["4"] = "no XML";
  EXPECT_TRUE(host.component.Go());
  const std::string pass = Sequence({Asks("4"), Asks("50"), Progress(80), Progress(100)});
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), pass, expected::LoadsTables("nothing"), "XMLprocessing\n",
                      expected::BeginsPassInOpenSession(), pass, expected::ReadsTransactions(),
                      expected::LoadsTables("nothing"), expected::EndsImport()}));
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST(Go, LoadsTheSalesTablesAgainWhenTheCostListDoesNotParse) {
  TestHost host;
  host.component.KRNStartingMonth(1);
  host.component.KRNStartingYear(2003);
  host.component.IncludeIncomeAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  host.quickBooks->answers["2"] = "no XML";
  EXPECT_TRUE(host.component.Go());
  const std::string pass = Sequence({Asks("1"), Asks("2"), Asks("50"), Progress(80), Progress(100),
                                     expected::ReadsSalesTables(), expected::LoadsSalesTables()});
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), pass, expected::LoadsSalesTables(), "XMLprocessing\n",
                      expected::BeginsPassInOpenSession(), pass, expected::ReadsTransactions(),
                      expected::LoadsSalesTables(), expected::EndsImport()}));
}

TEST(Go, GoesOnWhenTwoTopLevelAccountsHaveOneName) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  host.quickBooks->answers["4"] =
      fakes::AccountAnswer("4", {fakes::Account("E-1", "Rent"), fakes::Account("E-2", "RENT")});
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), 0);
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
  const std::string expenses = host.planContent->tables[fakes::TableId("20", "0600")];
  EXPECT_TRUE(fakes::Holds(expenses, "<c>Rent</c>"));
  EXPECT_TRUE(fakes::Holds(expenses, "<c>RENT</c>")) << "rows are compared case-sensitively";
}

}  // namespace
}  // namespace krnqb
