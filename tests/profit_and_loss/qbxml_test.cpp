#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "build_paths.h"
#include "profit_and_loss/answers.h"
#include "profit_and_loss/listing.h"
#include "profit_and_loss/reading.h"
#include "thrown_error.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::string_view rows = R"(<TextRow rowNumber="1" value="Ordinary Income/Expense" />
<TextRow rowNumber="2" value="Expense" />
<TextRow rowNumber="3" value="60200 &#183; Automobile Expense" />
<DataRow rowNumber="4"><RowData rowType="account" value="60200 &#183; Automobile Expense:60210 &#183; Fuel" />
<ColData colID="1" value="60210 &#183; Fuel" /><ColData colID="3" value="20.00" /><ColData colID="4" value="20.00" />
</DataRow>
<DataRow rowNumber="5"><RowData rowType="account" value="60200 &#183; Automobile Expense" />
<ColData colID="1" value="60200 &#183; Automobile Expense - Other" /><ColData colID="2" value="1.50" />
<ColData colID="4" value="1.50" /></DataRow>
<SubtotalRow rowNumber="6"><RowData rowType="account" value="60200 &#183; Automobile Expense" />
<ColData colID="1" value="Total 60200 &#183; Automobile Expense" /><ColData colID="2" value="1.50" />
<ColData colID="3" value="20.00" /><ColData colID="4" value="21.50" /></SubtotalRow>
<DataRow rowNumber="7"><RowData rowType="account" value="Caf&#233;" /><ColData colID="1" value="Caf&#233;" />
<ColData colID="2" value="-3.00" /><ColData colID="4" value="-3.00" /></DataRow>
<SubtotalRow rowNumber="8"><ColData colID="1" value="Total Expense" /><ColData colID="2" value="-1.50" />
<ColData colID="3" value="20.00" /><ColData colID="4" value="18.50" /></SubtotalRow>
<SubtotalRow rowNumber="9"><ColData colID="1" value="Net Ordinary Income" /><ColData colID="2" value="1.50" />
<ColData colID="3" value="-20.00" /><ColData colID="4" value="-18.50" /></SubtotalRow>
<TotalRow rowNumber="10"><ColData colID="1" value="Net Income" /><ColData colID="2" value="1.50" />
<ColData colID="3" value="-20.00" /><ColData colID="4" value="-18.50" /></TotalRow>
)";

std::string Answer() {
  return SummaryAnswer(Months(), rows);
}

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

TEST(QbxmlSummary, ReadsColumnsByTheirNumbersAndOwnAmountsOnce) {
  const ProfitAndLoss statement = ReadProfitAndLoss("answer.xml", Answer());
  EXPECT_EQ(AmountListing(statement),
            "Expense | Automobile Expense:Fuel | 0.00 20.00\n"
            "Expense | Automobile Expense | 1.50 0.00\n"
            "Expense | Caf\u00E9 | -3.00 0.00\n");
  EXPECT_EQ(statement.accounts[0].numbers, (std::vector<std::string>{"60200", "60210"}));
  EXPECT_EQ(statement.accounts[0].place, "answer.xml: row 4");
  EXPECT_EQ(statement.title, "Profit & Loss");
  EXPECT_EQ(statement.basis, "Accrual");
  EXPECT_EQ(FindingListing(statement), "");
  EXPECT_TRUE(statement.hasMonths);
}

TEST(QbxmlSummary, ReadsALineEndBeforeTheDocumentElementsToo) {
  std::string answer = Answer();
  for (std::size_t at = 0; (at = answer.find('\n', at)) != std::string::npos; at += 2)
    answer.insert(at, "\r");
  EXPECT_EQ(AmountListing(ReadProfitAndLoss("a", answer)), AmountListing(ReadProfitAndLoss("a", Answer())));
}

TEST(QbxmlSummary, ReadsATotalOnlyOverTheTimeOfTheReport) {
  const std::string columns = Column(1, "", "Blank") + Column(2, "");
  const std::string row =
      "<DataRow rowNumber=\"1\"><RowData rowType=\"account\" value=\"Rent\" /><ColData colID=\"1\" "
      "value=\"Rent\" />"
      "<ColData colID=\"2\" value=\"5.00\" /></DataRow>\n";
  const ProfitAndLoss year = ReadProfitAndLoss("a", SummaryAnswer(columns, row));
  EXPECT_EQ(ColumnListing(year), "2002-01-01..2002-02-28\n");
  EXPECT_EQ(AmountListing(year), "? | Rent | 5.00\n");
  const ProfitAndLoss month = ReadProfitAndLoss("a", SummaryAnswer(columns, row, "January 2002", "Cash"));
  EXPECT_EQ(ColumnListing(month), "1/2002 2002-01-01..2002-01-31\n");
  EXPECT_EQ(month.basis, "Cash");
}

TEST(QbxmlSummary, ReadsAReportWithoutRows) {
  const ProfitAndLoss statement = ReadProfitAndLoss("a", SummaryAnswer(Months(), ""));
  EXPECT_TRUE(statement.accounts.empty());
  EXPECT_EQ(statement.columns.size(), 2U);
}

TEST(QbxmlSummary, ReadsSeveralReportsOfOneDocument) {
  const std::string other = Replaced(Replaced(Answer(), "Jan 02", "Mar 02"), "Feb 02", "Apr 02");
  const std::size_t begin = other.find("<GeneralSummary");
  const std::string answers =
      Replaced(Answer(), "</QBXMLMsgsRs>",
               other.substr(begin, other.find("</QBXMLMsgsRs>") - begin) + "</QBXMLMsgsRs>");
  const ProfitAndLoss statement = ReadProfitAndLoss("a", answers);
  EXPECT_EQ(AmountListing(statement).substr(0, 64),
            "Expense | Automobile Expense:Fuel | 0.00 20.00 0.00 20.00\nExpens");
  EXPECT_EQ(statement.document, "a");
  EXPECT_EQ(statement.accounts[0].place, "a: report 1: row 4");
}

TEST(QbxmlSummary, ReportsTotalsThatDoNotAgreeAndWarnings) {
  const std::string wrong = Replaced(Answer(), "Automobile Expense\" /><ColData colID=\"2\" value=\"1.50\"",
                                     "Automobile Expense\" /><ColData colID=\"2\" value=\"1.51\"");
  EXPECT_EQ(FindingListing(ReadProfitAndLoss("a", wrong)),
            "a: row 6: \"Total 60200 \u00B7 Automobile Expense\" is 1.51 in column \"Jan 02\", but the "
            "amounts above "
            "it add up to 1.50\n");
  const std::string warning =
      Replaced(Answer(), "statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\"",
               "statusCode=\"530\" statusSeverity=\"Warn\" statusMessage=\"Cut\"");
  EXPECT_EQ(FindingListing(ReadProfitAndLoss("a", warning)),
            "a: QuickBooks answered with the warning \"530\": \"Cut\"; the report may be incomplete\n");
}

TEST(QbxmlSummary, RefusesWhatIsNotAReportOfAccounts) {
  struct Case {
    std::string document;
    std::string_view message;
  };
  const std::vector<Case> cases = {
      {Answer().substr(0, 900), "a: line "},
      {"<a/>", "a: not a qbXML response: the root element is \"a\";"},
      {"<QBXML><QBXMLMsgsRs><HostQueryRs/></QBXMLMsgsRs></QBXML>",
       "a: the document contains no answer to a report request;"},
      {Replaced(Answer(), "statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\"",
                "statusCode=\"3260\" statusSeverity=\"Error\" statusMessage=\"No permission\""),
       "a: QuickBooks refused the report with status \"3260\": \"No permission\";"},
      {"<QBXML><QBXMLMsgsRs><GeneralSummaryReportQueryRs statusCode=\"1\"/></QBXMLMsgsRs></QBXML>",
       "a: QuickBooks' answer contains no report;"},
      {Replaced(Answer(), "rowType=\"account\" value=\"Caf", "rowType=\"customer\" value=\"Caf"),
       "a: row 7: the row is about a \"customer\", not an account;"},
      {Replaced(Answer(), "value=\"-3.00\"", "value=\"three\""), "a: row 7: \"three\" is not an amount;"},
      {Replaced(Answer(), "<ColData colID=\"3\" value=\"20.00\"", "<ColData colID=\"513\" value=\"20.00\""),
       "a: row 4: colID \"513\" is not a column from 1 to 512;"},
      {Replaced(Answer(), "<ColData colID=\"3\" value=\"20.00\"", "<ColData colID=\"5\" value=\"20.00\""),
       "a: row 4: the columns are not in the order of their colID;"},
      {Replaced(Answer(), "<ColData colID=\"4\" value=\"20.00\"", "<ColData colID=\"5\" value=\"20.00\""),
       "a: row 4: \"20.00\" is in a column without a title;"},
      {Replaced(Answer(), "Profit &amp; Loss", "Balance Sheet"),
       "a: the report is \"Balance Sheet\", not a profit and loss;"},
      {Replaced(Answer(), "value=\"Caf&#233;\" /><ColData colID=\"1\"",
                "value=\"60200 &#183; Automobile Expense\" /><ColData colID=\"1\""),
       "a: row 7: the account \"Automobile Expense\" also has the amounts of a: row 5;"},
      {Replaced(Answer(), "Total 60200", "Total 60300"),
       "a: row 6: \"Total 60300 \u00B7 Automobile Expense\" has no line"},
  };
  for (const Case& test : cases) {
    const Error error = tests::ThrownError([&] { ReadProfitAndLoss("a", test.document); });
    EXPECT_EQ(error.Description().substr(0, test.message.size()), test.message);
    EXPECT_EQ(error.Description().find('\n'), std::string::npos) << error.Description();
  }
}

// The reports that were recorded of the samples: by month, filtered by kinds of accounts.
TEST(QbxmlSummary, ReadsEveryRecordedReport) {
  int reports = 0;
  for (const auto& entry : std::filesystem::directory_iterator(tests::RecordingsFolder())) {
    std::ifstream recording(entry.path());
    for (std::string line; std::getline(recording, line);) {
      const nlohmann::json exchange = nlohmann::json::parse(line);
      const std::string response = exchange.value("response", "");
      if (response.find("<ReportTitle>Profit &amp; Loss<") == std::string::npos) continue;
      const ProfitAndLoss statement = ReadProfitAndLoss(entry.path().filename().string(), response);
      EXPECT_EQ(FindingListing(statement), "") << entry.path();
      EXPECT_TRUE(statement.hasMonths);
      for (const StatementAccount& account : statement.accounts) EXPECT_NE(account.section, Section::Unknown);
      reports += statement.accounts.empty() ? 0 : 1;
    }
  }
  EXPECT_GE(reports, 9);
}

}  // namespace
}  // namespace krnqb::profit_and_loss
