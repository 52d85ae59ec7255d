#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "fakes/import_surroundings.h"
#include "import/amounts/report_reading.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using fakes::ReportAnswer;
using fakes::ReportRow;
using tests::NumberThrownBy;
using Months = std::vector<double>;

class ProfitAndLossReport : public testing::Test {
 protected:
  ProfitAndLossReport() { target = fakes::ImportSurroundings::Zeros({"Rent", "Utilities", "4001 · Fees"}); }

  void Parse(const std::string& answer) {
    ParseProfitAndLossReport(XmlElement::Parse(answer), target, observer,
                             {.operation = Operation::ParseProfitAndLossReport,
                              .request = 310,
                              .fromDate = "2002-01-01",
                              .toDate = "2002-12-31"});
  }
  void ParseRows(const std::string& rows) { Parse(ReportAnswer(rows)); }
  Months Of(const std::string& name) const {
    Months months;
    for (std::int16_t month = 1; month <= 12; ++month) months.push_back(target->At(name).SubTotal(month));
    return months;
  }
  double January(const std::string& name) const { return target->At(name).SubTotal(1); }
  std::vector<Notice> NoticesOf(NoticeKind kind) const {
    std::vector<Notice> notices;
    for (const Notice& notice : observer.notices) {
      if (notice.kind == kind) notices.push_back(notice);
    }
    return notices;
  }

  std::optional<SubtotalCollection> target;
  fakes::RecordingObserver observer;
};

TEST_F(ProfitAndLossReport, AddsColumnMToMonthM) {
  ParseRows(ReportRow("Rent", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "78"}));
  EXPECT_EQ(Of("Rent"), (Months{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
  EXPECT_EQ(target->At("Rent").Total(), 78) << "the column of totals is not added";
}

TEST_F(ProfitAndLossReport, AddsToExistingAmounts) {
  ParseRows(ReportRow("Rent", {"1.25", "-2"}));
  ParseRows(ReportRow("Rent", {"1.25", "-2"}));
  EXPECT_EQ(Of("Rent"), (Months{2.5, -4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(ProfitAndLossReport, KeepsTheMonthsMissingFromAShorterReport) {
  target->At("Rent").SubTotal(4, 9);
  ParseRows(ReportRow("Rent", {"1", "2", "3"}) + ReportRow("Utilities", {}));
  EXPECT_EQ(Of("Rent"), (Months{1, 2, 3, 9, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Of("Utilities"), Months(12, 0));
}

TEST_F(ProfitAndLossReport, IgnoresColumnsInANamespace) {
  ParseRows(
      "<DataRow><RowData rowType=\"account\" value=\"Rent\"/><ColData xmlns=\"urn:x\" value=\"8\"/>"
      "<ColData value=\"Rent\"/><x:ColData xmlns:x=\"urn:x\" value=\"8\"/><ColData value=\"1\"/></DataRow>");
  EXPECT_EQ(Of("Rent"), (Months{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(ProfitAndLossReport, FindsAnAccountByItsLabelWithAndWithoutNumber) {
  ParseRows(ReportRow("6000 · Rent", {"1"}) + ReportRow("Rent", {"2"}) +
            ReportRow("6000 &#183;  Rent ", {"4"}) + ReportRow("RENT", {"8"}));
  EXPECT_EQ(January("Rent"), 15);
}

TEST_F(ProfitAndLossReport, UsesTheNameAfterTheFirstSeparator) {
  ParseRows(ReportRow("4000 · 4001 · Fees", {"1"}) + ReportRow("4001 · Fees", {"2"}));
  EXPECT_EQ(January("4001 · Fees"), 1) << "the second row belongs to the account Fees";
}

TEST_F(ProfitAndLossReport, UsesAWholeLabelWithoutSeparator) {
  ParseRows(ReportRow(" Rent", {"1"}) + ReportRow("6000·Rent", {"2"}) + ReportRow("6000 - Rent", {"4"}));
  EXPECT_EQ(January("Rent"), 0);
}

TEST_F(ProfitAndLossReport, TrimsTheNameAfterTheSeparator) {
  EXPECT_EQ(AccountNameOfLabel("4000 · Sales"), "Sales");
  EXPECT_EQ(AccountNameOfLabel("4000 ·   Sales of plants  "), "Sales of plants");
  EXPECT_EQ(AccountNameOfLabel(" · Sales"), "Sales");
  EXPECT_EQ(AccountNameOfLabel("4000 · "), "");
  EXPECT_EQ(AccountNameOfLabel(" Sales "), " Sales ");
  EXPECT_EQ(AccountNameOfLabel(""), "");
}

TEST_F(ProfitAndLossReport, SkipsSubAccounts) {
  ParseRows(ReportRow("Rent:Office", {"1"}) + ReportRow("6000 · Rent:6001 · Office", {"2"}) +
            ReportRow("A: · Rent", {"4"}) + ReportRow("Rent:", {"8"}));
  EXPECT_EQ(target->At("Rent").Total(), 0);
}

TEST_F(ProfitAndLossReport, SkipsALabelThatBeginsWithAColon) {
  target = fakes::ImportSurroundings::Zeros({":Rent", "Rent"});
  ParseRows(ReportRow(":Rent", {"1"}) + ReportRow(": · Rent", {"2"}));
  EXPECT_EQ(target->At(":Rent").Total(), 0);
  EXPECT_EQ(target->At("Rent").Total(), 0);
  EXPECT_TRUE(observer.notices.empty());
}

TEST_F(ProfitAndLossReport, SkipsRowsWithoutANameAndRowsThatAreNotAccounts) {
  ParseRows(
      "<DataRow><RowData rowType=\"account\"/><ColData/><ColData value=\"1\"/></DataRow>"
      "<DataRow><RowData rowType=\"customer\" value=\"Rent\"/><ColData/><ColData value=\"2\"/></DataRow>"
      "<DataRow><RowData value=\"Rent\"/><ColData/><ColData value=\"4\"/></DataRow>"
      "<TextRow value=\"Rent\"/><TotalRow><ColData value=\"Rent\"/><ColData value=\"8\"/></TotalRow>");
  EXPECT_EQ(target->At("Rent").Total(), 0);
}

TEST_F(ProfitAndLossReport, AddsAndReportsSeveralRowsOfAnAccount) {
  ParseRows(ReportRow("Utilities", {"10"}) + ReportRow("Rent", {"1"}, "DataRow") +
            ReportRow("Rent", {"100"}, "SubtotalRow"));
  EXPECT_EQ(January("Rent"), 101);
  const auto notices = NoticesOf(NoticeKind::AccountInSeveralRows);
  ASSERT_EQ(notices.size(), 1U);
  EXPECT_EQ(notices[0].description, "Rent");
  EXPECT_EQ(notices[0].place.request, 310);
  EXPECT_EQ(notices[0].place.toDate, "2002-12-31");
}

TEST_F(ProfitAndLossReport, ReportsSeveralRowsCaseInsensitively) {
  ParseRows(ReportRow("Rent", {"1"}) + ReportRow("RENT", {"2"}));
  EXPECT_EQ(January("Rent"), 3);
  const auto notices = NoticesOf(NoticeKind::AccountInSeveralRows);
  ASSERT_EQ(notices.size(), 1U);
  EXPECT_EQ(notices[0].description, "RENT");
}

TEST_F(ProfitAndLossReport, UsesColumnsByPositionAndReportsOtherNumbers) {
  ParseRows(
      "<DataRow><RowData rowType=\"account\" value=\"Rent\"/><ColData colID=\"1\" value=\"Rent\"/>"
      "<ColData colID=\"2\" value=\"5\"/><ColData colID=\"4\" value=\"7\"/></DataRow>");
  EXPECT_EQ(Of("Rent"), (Months{5, 7, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  const auto notices = NoticesOf(NoticeKind::ColumnsMisaligned);
  ASSERT_EQ(notices.size(), 1U);
  EXPECT_EQ(notices[0].description, "Rent");
}

TEST_F(ProfitAndLossReport, ReportsNothingForAnOrdinaryReport) {
  ParseRows(ReportRow("Rent", {"1", "2"}) + ReportRow("Utilities", {"1", "2"}));
  EXPECT_TRUE(observer.notices.empty());
}

TEST_F(ProfitAndLossReport, ReadsAMissingAmountAsZero) {
  ParseRows(
      "<DataRow><RowData rowType=\"account\" value=\"Rent\"/><ColData value=\"Rent\"/><ColData/>"
      "<ColData value=\"\"/><ColData value=\"none\"/><ColData value=\"4\"/></DataRow>");
  EXPECT_EQ(Of("Rent"), (Months{0, 0, 0, 4, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(ProfitAndLossReport, ReadsTheLeadingNumberOfAnAmount) {
  ParseRows(ReportRow("Rent", {" 12.50", "1,234.50", "-3%", "5 net", "1E2", "(7)", "$8", "+9", ".5", "--1"}));
  EXPECT_EQ(Of("Rent"), (Months{12.5, 1, -3, 5, 100, 0, 0, 9, 0.5, 0, 0, 0}));
}

TEST_F(ProfitAndLossReport, UsesTheColumnsOfTheNamesParent) {
  ParseRows(
      "<Group><Row><RowData rowType=\"account\" value=\"Rent\"/><Deep><ColData/><ColData value=\"1\"/></Deep>"
      "<ColData/></Row><ColData/><ColData value=\"2\"/></Group>"
      "<Row><ColData/><Other/><ColData value=\"4\"/><RowData rowType=\"account\" "
      "value=\"Utilities\"/></Row>");
  EXPECT_EQ(January("Rent"), 0);
  EXPECT_EQ(January("Utilities"), 4);
}

TEST_F(ProfitAndLossReport, SkipsAndReportsAnAccountWithoutSubtotal) {
  ParseRows(ReportRow("7000 · Wages", {"250.00"}) + ReportRow("Rent", {"1"}));
  EXPECT_EQ(January("Rent"), 1);
  const auto notices = NoticesOf(NoticeKind::AmountSkipped);
  ASSERT_EQ(notices.size(), 1U);
  ASSERT_TRUE(notices[0].skipped);
  EXPECT_EQ(notices[0].skipped->reason, SkipReason::NoSubtotal);
  EXPECT_EQ(notices[0].skipped->transactionId, "");
  EXPECT_EQ(notices[0].skipped->source, "Wages");
  EXPECT_EQ(notices[0].place.request, 310);
}

TEST_F(ProfitAndLossReport, SkipsAnAccountWithoutSubtotalWhateverItsAmounts) {
  const std::string huge = "1.7976931348623157E+308";
  EXPECT_EQ(NumberThrownBy([&] {
              ParseRows(ReportRow("Wages", {"1E999"}) + ReportRow("Wages", {huge, huge}) +
                        ReportRow("Rent", {"1"}));
            }),
            0);
  EXPECT_EQ(January("Rent"), 1);
}

TEST_F(ProfitAndLossReport, SkipsEveryRowWithoutACollection) {
  target.reset();
  ParseRows(ReportRow("Rent", {"1"}));
  EXPECT_FALSE(target);
}

TEST_F(ProfitAndLossReport, FailsIfTheAnswerIsMalformed) {
  EXPECT_EQ(NumberThrownBy([&] { Parse("no document"); }), error_number::objectNotSet);
  EXPECT_EQ(NumberThrownBy([&] { Parse(""); }), error_number::objectNotSet);
}

TEST_F(ProfitAndLossReport, AddsNothingWithoutRows) {
  Parse(fakes::StatusAnswer("GeneralSummaryReportQueryRs", "3120"));
  Parse("<QBXML/>");
  EXPECT_EQ(target->At("Rent").Total(), 0);
}

TEST_F(ProfitAndLossReport, FailsIfASumIsOutOfRange) {
  const std::string row = ReportRow("Rent", {"1.7976931348623157E+308"});
  EXPECT_EQ(NumberThrownBy([&] { ParseRows(row + row); }), error_number::overflow);
  EXPECT_EQ(January("Rent"), std::numeric_limits<double>::max());
}

// Reports requested in a session.

TEST(RequestedProfitAndLossReport, AddsTheResponse) {
  fakes::ImportSurroundings surroundings;
  surroundings.quickBooks->answers["300 2002-04-01 2003-03-31"] = ReportAnswer(ReportRow("Plants", {"1"}));
  surroundings.quickBooks->answers["320"] = ReportAnswer(ReportRow("Seeds", {"2"}));
  const DateRange range{"2002-04-01", "2003-03-31"};
  ParseProfitAndLossReport(surroundings.context.session, 300, range, surroundings.state.incomeSubtotals,
                           surroundings.observer);
  ParseProfitAndLossReport(surroundings.context.session, 320, range, surroundings.state.costSubtotals,
                           surroundings.observer);
  EXPECT_EQ(surroundings.Income("Plants", 1), 1);
  EXPECT_EQ(surroundings.Cost("Seeds", 1), 2);
  EXPECT_EQ(surroundings.journal->Text(),
            "ProcessRequest 300 2002-04-01 2003-03-31\nProcessRequest 320 2002-04-01 2003-03-31\n");
}

TEST(RequestedProfitAndLossReport, FailsAtAMalformedAnswerAndAtARefusedRequest) {
  fakes::ImportSurroundings surroundings;
  surroundings.quickBooks->answers["300"] = "no document";
  surroundings.journal->Fail("ProcessRequest 310 2002-01-01 2002-12-31", Error(-2147220477, "unexpected"));
  const DateRange range{"2002-01-01", "2002-12-31"};
  const auto ask = [&](std::int32_t number) {
    ParseProfitAndLossReport(surroundings.context.session, number, range, surroundings.state.incomeSubtotals,
                             surroundings.observer);
  };
  EXPECT_EQ(NumberThrownBy([&] { ask(300); }), error_number::objectNotSet);
  EXPECT_EQ(NumberThrownBy([&] { ask(310); }), -2147220477);
}

TEST(RequestedProfitAndLossReport, ReportsAnErrorStatus) {
  fakes::ImportSurroundings surroundings;
  surroundings.quickBooks->answers["300"] = fakes::StatusAnswer("GeneralSummaryReportQueryRs", "3260");
  ParseProfitAndLossReport(surroundings.context.session, 300, {"2002-01-01", "2002-12-31"},
                           surroundings.state.incomeSubtotals, surroundings.observer);
  ASSERT_EQ(surroundings.observer.notices.size(), 1U);
  const Notice& notice = surroundings.observer.notices[0];
  EXPECT_EQ(notice.kind, NoticeKind::AnswerStatus);
  EXPECT_EQ(notice.number, 3260);
  EXPECT_EQ(notice.place.request, 300);
  EXPECT_EQ(notice.place.fromDate, "2002-01-01");
}

TEST_F(ProfitAndLossReport, DoesNotReportAnAccountWithoutSubtotalWhoseAmountsAreZero) {
  ParseRows(ReportRow("Wages", {"0.00", "0.00"}) + ReportRow("Freight", {}));
  EXPECT_TRUE(observer.notices.empty());
}

}  // namespace
}  // namespace krnqb
