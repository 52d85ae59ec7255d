#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/test_host.h"

// With a processor of version 2, the months come from profit-and-loss reports.

namespace krnqb {
namespace {

using expected::Asks;
using expected::FindsSession;
using expected::Progress;
using expected::Sequence;
using fakes::TestHost;

class GoWithReports : public testing::Test {
 protected:
  GoWithReports() {
    host.quickBooks->majorVersion = 2;
    host.quickBooks->minorVersion = 0;
    host.component.BalancesImport(BalImport_All);
    host.component.KRNStartingMonth(4);
    host.component.KRNStartingYear(2003);
    for (const char* report : {"300", "310", "320"}) {
      host.quickBooks->answers[report] = fakes::Answer(
          "<GeneralSummaryReportQueryRs statusCode=\"0\" statusSeverity=\"Info\" "
          "statusMessage=\"Status OK\"><ReportRet/></GeneralSummaryReportQueryRs>\n");
    }
  }

  TestHost host;
};

TEST_F(GoWithReports, RequestsOneReportForExpensesOnly) {
  host.component.IncludeExpenseAccounts(true);
  EXPECT_TRUE(host.component.Go());
  const std::string pass =
      Sequence({Asks("4"), Asks("50"), Progress(80), expected::ReadsExpenseTables(), Progress(100)});
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass(), pass, expected::LoadsExpenseTables(),
                                            "XMLprocessing\n", expected::BeginsPassInOpenSession(), pass,
                                            FindsSession(), Asks("310 2002-04-01 2003-03-31"),
                                            expected::LoadsExpenseTables(), expected::EndsImport()}));
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST_F(GoWithReports, RequestsIncomeAndCostOfSalesForIncome) {
  host.component.IncludeIncomeAccounts(true);
  EXPECT_TRUE(host.component.Go());
  const std::string pass =
      Sequence({Asks("1"), Asks("2"), Asks("50"), Progress(80), Progress(100), expected::ReadsSalesTables(),
                expected::LoadsSalesTables(), expected::ReadsSalesTables()});
  EXPECT_EQ(
      host.journal->Text(),
      Sequence({expected::BeginsFirstPass(), pass, expected::LoadsSalesTables(), "XMLprocessing\n",
                expected::BeginsPassInOpenSession(), pass, FindsSession(), Asks("300 2002-04-01 2003-03-31"),
                Asks("320 2002-04-01 2003-03-31"), expected::LoadsSalesTables(), expected::EndsImport()}));
}

TEST_F(GoWithReports, RequestsAllThreeReportsInOrderForBothGroups) {
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludeIncomeAccounts(true);
  EXPECT_TRUE(host.component.Go());
  const std::string pass =
      Sequence({expected::AsksAllLists(), Progress(80), expected::ReadsExpenseTables(), Progress(100),
                expected::ReadsSalesTables(), expected::LoadsSalesTables(), expected::ReadsSalesTables()});
  const std::string loads = expected::LoadsExpenseTables() + expected::LoadsSalesTables();
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), pass, loads, "XMLprocessing\n",
                      expected::BeginsPassInOpenSession(), pass, FindsSession(),
                      Asks("300 2002-04-01 2003-03-31"), Asks("320 2002-04-01 2003-03-31"),
                      Asks("310 2002-04-01 2003-03-31"), loads, expected::EndsImport()}));
}

TEST_F(GoWithReports, ReadsThePeriodButNoReportForPastPerformanceOnly) {
  host.component.KRNProduct(QBKRN_BRI);  // whose past performance is never imported
  host.component.IncludePastPerformance(true);
  EXPECT_TRUE(host.component.Go());
  const std::string pass = Sequence({Asks("1"), Asks("2"), Asks("50"), Progress(80), Progress(100)});
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), pass, "XMLprocessing\n",
                      expected::BeginsPassInOpenSession(), pass, FindsSession(), expected::EndsImport()}));
}

TEST_F(GoWithReports, RequestsNoReportWithoutBalances) {
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_None);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), Asks("4"), Progress(80), expected::ReadsExpenseTables(),
                      Progress(100), expected::LoadsExpenseTables(), expected::EndsImport()}));
}

TEST_F(GoWithReports, SendsTheReportRequestInFull) {
  host.component.IncludeExpenseAccounts(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(
      host.quickBooks->requests.back(),
      "<?xml version=\"1.0\"?>\r\n"
      "<?qbxml version=\"2.0\"?>\r\n"
      "<QBXML>\r\n"
      "<QBXMLMsgsRq onError=\"continueOnError\">\r\n"
      "<GeneralSummaryReportQueryRq>\r\n"
      "<GeneralSummaryReportType>ProfitAndLossStandard</GeneralSummaryReportType>\r\n"
      "<ReportPeriod><FromReportDate>2002-04-01</FromReportDate><ToReportDate>2003-03-31</ToReportDate>"
      "</ReportPeriod>\r\n"
      "<ReportAccountFilter><AccountTypeFilter>OrdinaryExpense</AccountTypeFilter></ReportAccountFilter>\r\n"
      "<SummarizeColumnsBy>Month</SummarizeColumnsBy>\r\n"
      "</GeneralSummaryReportQueryRq>\r\n"
      "</QBXMLMsgsRq>\r\n"
      "</QBXML>");
}

struct PeriodCase {
  std::int16_t month;
  std::int16_t year;
  const char* dates;
};

TEST_F(GoWithReports, CoversTheTwelveMonthsFromTheStartingMonth) {
  const PeriodCase cases[] = {{1, 2002, "2002-01-01 2002-12-31"},  {2, 2002, "2002-02-01 2003-01-31"},
                              {3, 2003, "2003-03-01 2004-02-29"},  {3, 2002, "2002-03-01 2003-02-28"},
                              {11, 2002, "2002-11-01 2003-10-31"}, {12, 2002, "2002-12-01 2003-11-30"}};
  host.component.IncludeExpenseAccounts(true);
  for (const PeriodCase& each : cases) {
    host.component.StartingMonth(each.month);
    host.component.StartingYear(each.year);
    host.journal->Clear();
    EXPECT_TRUE(host.component.Go());
    EXPECT_EQ(host.journal->Count(std::string("ProcessRequest 310 ") + each.dates), 1)
        << host.journal->Text();
  }
}

TEST_F(GoWithReports, EndsWithTheProcessorsErrorWhenAReportIsRefused) {
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludeIncomeAccounts(true);
  host.journal->Fail("ProcessRequest 320 2002-04-01 2003-03-31", Error(-2147220478, "unexpected"));
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), -2147220478);
  EXPECT_EQ(host.component.ErrorDescription(), "unexpected");
  EXPECT_EQ(host.journal->Count("AfterImport"), 0);
  EXPECT_EQ(host.journal->Count("ProcessRequest 310 2002-04-01 2003-03-31"), 0);
  EXPECT_TRUE(
      host.journal->Text().ends_with("ProcessRequest 320 2002-04-01 2003-03-31\nprocessor released\n"));
}

}  // namespace
}  // namespace krnqb
