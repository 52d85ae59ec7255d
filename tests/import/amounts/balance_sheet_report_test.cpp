#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "fakes/import_surroundings.h"
#include "import/amounts/report_reading.h"
#include "qbxml/request_catalogue.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using fakes::ReportAnswer;
using fakes::ReportRow;
using tests::NumberThrownBy;

const std::vector<std::string> accountTypes = {
    "Bank",         "AccountsReceivable", "OtherAsset", "OtherCurrentAsset",     "FixedAsset",
    "Depreciation", "AccountsPayable",    "CreditCard", "OtherCurrentLiability", "LongTermLiability",
    "Equity",       "RetainedEarnings"};
const std::vector<std::string> percents = {"8",  "17", "25", "33", "42", "50",
                                           "58", "67", "75", "83", "92", "100"};

class BalanceSheetReport : public testing::Test {
 protected:
  BalanceSheetReport() {
    for (const std::string& type : accountTypes) target.Add(cSubtotals(type), type);
  }

  void Parse(TypeProgress progress = TypeProgress::Silent, std::int16_t period = 3) {
    ParseBalanceSheetByType(surroundings.context, period, BuildRequest(330, "2002-12-31", "2002-12-31"),
                            "2002-12-31", target, progress);
  }
  void Answer(const std::string& type, const std::string& rows) {
    surroundings.quickBooks->answers["330 " + type] = ReportAnswer(rows);
  }
  double Of(const std::string& type, std::int16_t period = 3) const {
    return target.At(type).SubTotal(period);
  }
  double SumOfAll() const {
    double sum = 0;
    for (const cSubtotals& record : target) sum += record.Total();
    return sum;
  }

  fakes::ImportSurroundings surroundings;
  SubtotalCollection target;
};

TEST_F(BalanceSheetReport, RequestsEachAccountTypeInOrder) {
  Parse();
  std::string expected;
  for (const std::string& type : accountTypes) {
    expected += "ProcessRequest 330 " + type + " 2002-12-31 2002-12-31\n";
  }
  EXPECT_EQ(surroundings.journal->Text(), expected) << "no event is raised";
}

TEST_F(BalanceSheetReport, RaisesAnEventBeforeEachRequest) {
  Parse(TypeProgress::Raised);
  std::string expected;
  for (std::size_t i = 0; i < accountTypes.size(); ++i) {
    expected += "ProgressBarChange " + percents[i] + " Processing...\n";
    expected += "ProcessRequest 330 " + accountTypes[i] + " 2002-12-31 2002-12-31\n";
  }
  EXPECT_EQ(surroundings.journal->Text(), expected);
}

TEST_F(BalanceSheetReport, ReplacesEveryPlaceholderByTheType) {
  const std::string request = "<!-- AccountTypeFilterValue -->" +
                              BuildRequest(330, "2002-12-31", "2002-12-31") +
                              "<!-- AccountTypeFilterValueAccountTypeFilterValue -->";
  ParseBalanceSheetByType(surroundings.context, 1, request, "2002-12-31", target, TypeProgress::Silent);
  const auto& sent = surroundings.quickBooks->requests;
  ASSERT_EQ(sent.size(), accountTypes.size());
  EXPECT_TRUE(sent[10].starts_with("<!-- Equity -->")) << sent[10];
  EXPECT_TRUE(sent[10].ends_with("<!-- EquityEquity -->")) << sent[10];
  EXPECT_EQ(sent[10].find("AccountTypeFilterValue"), std::string::npos);
}

TEST_F(BalanceSheetReport, AddsTheFirstAmountOfEachTopLevelRowToThePeriod) {
  target.At("Bank").SubTotal(3, 1000);
  Answer("Bank", ReportRow("Checking", {"100.50", "7"}) + ReportRow("Savings", {"-20"}));
  Answer("Equity", ReportRow("3000 · Capital", {"5"}));
  Parse();
  EXPECT_EQ(Of("Bank"), 1080.5);
  EXPECT_EQ(Of("Equity"), 5);
  EXPECT_EQ(SumOfAll(), 1085.5);
  Parse(TypeProgress::Silent, 14);
  EXPECT_EQ(Of("Bank", 14), 80.5);
}

TEST_F(BalanceSheetReport, SkipsSubAccountsAndRowsWithoutAName) {
  Answer("Bank",
         ReportRow("Checking:Petty cash", {"1"}) + ReportRow("Checking", {"2"}) + ReportRow(":Cash", {"32"}) +
             "<DataRow><RowData rowType=\"account\"/><ColData/><ColData value=\"4\"/></DataRow>"
             "<DataRow><RowData rowType=\"vendor\" value=\"X\"/><ColData/><ColData value=\"8\"/></DataRow>"
             "<TotalRow><ColData/><ColData value=\"16\"/></TotalRow>");
  Parse();
  EXPECT_EQ(Of("Bank"), 2);
}

TEST_F(BalanceSheetReport, KeepsTheFigureOfATypeWithoutRowsOrAmounts) {
  target.At("CreditCard").SubTotal(3, 9);
  Answer("CreditCard", "");
  Answer("FixedAsset",
         ReportRow("Truck", {}) +
             "<DataRow><RowData rowType=\"account\" value=\"Van\"/></DataRow>"
             "<DataRow><RowData rowType=\"account\" value=\"Car\"/><ColData/><ColData/></DataRow>");
  surroundings.quickBooks->answers["330 Depreciation"] =
      fakes::StatusAnswer("GeneralSummaryReportQueryRs", "3140");
  Parse();
  EXPECT_EQ(SumOfAll(), 9);
}

TEST_F(BalanceSheetReport, ExpectsAnErrorForFiguresThatAreNotAccountTypes) {
  surroundings.quickBooks->answers["330"] = fakes::StatusAnswer("GeneralSummaryReportQueryRs", "3140");
  Parse();
  std::vector<std::string> expected;
  int missing = 0;
  for (const Notice& notice : surroundings.observer.notices) {
    ASSERT_EQ(notice.kind, NoticeKind::AnswerStatus);
    if (notice.meaning == NoticeMeaning::Complete) {
      expected.push_back(notice.place.accountType);
    } else {
      ++missing;
    }
  }
  EXPECT_EQ(expected, (std::vector<std::string>{"Depreciation", "RetainedEarnings"}));
  EXPECT_EQ(missing, 10);
}

TEST_F(BalanceSheetReport, ReadsTheLeadingNumberOfAnAmount) {
  Answer("Bank", ReportRow("Checking", {"1,000.00"}) + ReportRow("Savings", {" 2.5 net"}) +
                     ReportRow("Cash", {"none"}));
  Parse();
  EXPECT_EQ(Of("Bank"), 3.5);
}

TEST_F(BalanceSheetReport, UsesTheSecondColumnWhateverItsNumber) {
  Answer("Bank",
         "<DataRow><RowData rowType=\"account\" value=\"Cash\"/><ColData colID=\"1\" value=\"Cash\"/>"
         "<ColData colID=\"3\" value=\"5\"/></DataRow>");
  Parse();
  EXPECT_EQ(Of("Bank"), 5);
  EXPECT_EQ(surroundings.NoticesOf(NoticeKind::ColumnsMisaligned), 1U);
}

TEST_F(BalanceSheetReport, AddsAndReportsSeveralRowsOfAnAccount) {
  Answer("Bank", ReportRow("Checking", {"1"}, "DataRow") + ReportRow("Checking", {"10"}, "SubtotalRow"));
  Parse();
  EXPECT_EQ(Of("Bank"), 11);
  EXPECT_EQ(surroundings.NoticesOf(NoticeKind::AccountInSeveralRows), 1U);
}

TEST_F(BalanceSheetReport, SkipsAndReportsRowsOfAMissingType) {
  target = SubtotalCollection();
  target.Add(cSubtotals("Equity"), "Equity");
  Answer("Bank", ReportRow("Checking", {"1"}));
  Answer("Equity", ReportRow("Capital", {"2"}));
  Parse();
  EXPECT_EQ(SumOfAll(), 2);
  EXPECT_EQ(target.Count(), 1U);
  const auto skipped = surroundings.SkippedAmounts();
  ASSERT_EQ(skipped.size(), 1U);
  EXPECT_EQ(skipped[0].skipped->reason, SkipReason::NoSubtotal);
  EXPECT_EQ(skipped[0].skipped->amount, "1");
  EXPECT_EQ(skipped[0].place.request, 330);
}

TEST_F(BalanceSheetReport, SkipsRowsOfAMissingTypeWhateverTheirAmounts) {
  target = SubtotalCollection();
  Answer("Bank", ReportRow("Checking", {"1E999"}));
  EXPECT_EQ(NumberThrownBy([&] { Parse(); }), 0);
}

TEST_F(BalanceSheetReport, ReportsTheStatusOfAnUnknownTypeAndContinues) {
  surroundings.quickBooks->answers["330 Depreciation"] =
      fakes::StatusAnswer("GeneralSummaryReportQueryRs", "3140");
  Answer("Equity", ReportRow("Capital", {"2"}));
  Parse();
  EXPECT_EQ(Of("Equity"), 2);
  ASSERT_EQ(surroundings.observer.notices.size(), 1U);
  const Notice& notice = surroundings.observer.notices[0];
  EXPECT_EQ(notice.kind, NoticeKind::AnswerStatus);
  EXPECT_EQ(notice.number, 3140);
  EXPECT_EQ(notice.place.request, 330);
  EXPECT_EQ(notice.place.toDate, "2002-12-31");
}

TEST_F(BalanceSheetReport, FailsAtAMalformedAnswerAndKeepsTheEarlierTypes) {
  Answer("Bank", ReportRow("Checking", {"1"}));
  surroundings.quickBooks->answers["330 OtherAsset"] = "no document";
  Answer("Equity", ReportRow("Capital", {"2"}));
  EXPECT_EQ(NumberThrownBy([&] { Parse(); }), error_number::objectNotSet);
  EXPECT_EQ(SumOfAll(), 1);
  EXPECT_EQ(surroundings.journal->Count("ProcessRequest 330 OtherCurrentAsset 2002-12-31 2002-12-31"), 0);
}

TEST_F(BalanceSheetReport, FailsAtARefusedRequestAndAtASinksError) {
  surroundings.journal->Fail("ProcessRequest 330 Bank 2002-12-31 2002-12-31", Error(-2147220477, "no"));
  EXPECT_EQ(NumberThrownBy([&] { Parse(); }), -2147220477);
  surroundings.journal->Heal();
  surroundings.journal->Fail("ProgressBarChange 17 Processing...", Error(17, "sink"));
  EXPECT_EQ(NumberThrownBy([&] { Parse(TypeProgress::Raised); }), 17);
}

TEST_F(BalanceSheetReport, FailsWithoutASession) {
  surroundings.processors.refusal = Error(error_number::cannotCreateObject);
  EXPECT_EQ(NumberThrownBy([&] { Parse(); }), error_number::objectNotSet);
}

TEST_F(BalanceSheetReport, ReportsTheFirstAmountOfARowOfAMissingType) {
  target = SubtotalCollection();
  Answer("Bank", ReportRow("Checking", {"1", "70"}));
  Parse();
  const auto skipped = surroundings.SkippedAmounts();
  ASSERT_EQ(skipped.size(), 1U);
  EXPECT_EQ(skipped[0].skipped->amount, "1");
}

}  // namespace
}  // namespace krnqb
