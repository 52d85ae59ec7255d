#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "profit_and_loss/listing.h"
#include "profit_and_loss/reading.h"
#include "thrown_error.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::string_view detail = R"(Profit & Loss Detail
January through February 2002
,,Type,Date,Num,Name,Memo,Split,Amount,Balance
Ordinary Income/Expense,,,,,,,,,
,Expense
,  Payroll
,,Paycheck,01/15/2002,101,"Ames, Jo",Wages,Checking,"1,000.00","1,000.00"
,,Paycheck,02/15/2002,102,"Ames, Jo",Wages,Checking,900.00,"1,900.00"
,  Total Payroll,,,,,,,"1,900.00","1,900.00"
,  Jobs
,    Fuel
,,Bill,01/31/2002,,Gas Co.,,A/P,20.00,20.00
,    Total Fuel,,,,,,,20.00,20.00
,    Jobs - Other
,,General Journal,02/01/2002,7,,Fix,Jobs,(5.00),-5.00
,    Total Jobs - Other,,,,,,,-5.00,-5.00
,  Total Jobs,,,,,,,15.00,15.00
,Total Expense,,,,,,,"1,915.00","1,915.00"
Net Ordinary Income,,,,,,,,"-1,915.00","-1,915.00"
Net Income,,,,,,,,"-1,915.00","-1,915.00"
)";

constexpr std::string_view detailAmounts =
    "Expense | Payroll | 1,000.00 900.00\n"
    "Expense | Jobs:Fuel | 20.00 0.00\n"
    "Expense | Jobs | 0.00 -5.00\n";

constexpr std::string_view answerBegin =
    R"(<?xml version="1.0" ?><QBXML><QBXMLMsgsRs><GeneralDetailReportQueryRs statusCode="0"><ReportRet>
<ReportTitle>Profit &amp; Loss Detail</ReportTitle><ReportSubtitle>January 2002</ReportSubtitle>
<ReportBasis>Cash</ReportBasis>
<ColDesc colID="1" dataType="STRTYPE"><ColTitle titleRow="1" /><ColType>Blank</ColType></ColDesc>
<ColDesc colID="2" dataType="STRTYPE"><ColTitle titleRow="1" value="Type" /><ColType>TxnType</ColType></ColDesc>
<ColDesc colID="3" dataType="DATETYPE"><ColTitle titleRow="1" value="Date" /><ColType>Date</ColType></ColDesc>
<ColDesc colID="4" dataType="STRTYPE"><ColTitle titleRow="1" value="Num" /><ColType>RefNumber</ColType></ColDesc>
<ColDesc colID="5" dataType="STRTYPE"><ColTitle titleRow="1" value="Name" /><ColType>Name</ColType></ColDesc>
<ColDesc colID="6" dataType="AMTTYPE"><ColTitle titleRow="1" value="Amount" /><ColType>Amount</ColType></ColDesc>
<ReportData><TextRow rowNumber="1" value="Ordinary Income/Expense" /><TextRow rowNumber="2" value="Income" />
)";

constexpr std::string_view answerEnd = R"(<SubtotalRow rowNumber="7"><ColData colID="1" value="Total Sales" />
<ColData colID="6" value="12.50" /></SubtotalRow>
<SubtotalRow rowNumber="8"><ColData colID="1" value="Total Income" /><ColData colID="6" value="12.50" /></SubtotalRow>
<TotalRow rowNumber="9"><ColData colID="1" value="Net Income" /><ColData colID="6" value="12.50" /></TotalRow>
</ReportData></ReportRet></GeneralDetailReportQueryRs></QBXMLMsgsRs></QBXML>)";

std::string Answer() {
  return std::string(answerBegin) + R"(<TextRow rowNumber="3" value="4000 &#183; Sales" />
<DataRow rowNumber="4"><ColData colID="2" value="Invoice" /><ColData colID="3" value="2002-01-05" />
<ColData colID="4" value="12" /><ColData colID="5" value="Smith &amp; Co" /><ColData colID="6" value="10.00" /></DataRow>
<DataRow rowNumber="5"><ColData colID="2" value="Deposit" /><ColData colID="3" value="2002-01-06" />
<ColData colID="6" value="2.50" /></DataRow>
)" + std::string(answerEnd);
}

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

TEST(CsvDetail, ReadsTransactionsAndTheirSums) {
  const ProfitAndLoss statement = ReadProfitAndLoss("detail.csv", detail);
  EXPECT_EQ(AmountListing(statement), detailAmounts);
  EXPECT_EQ(FindingListing(statement), "");
  EXPECT_EQ(ColumnListing(statement), "1/2002 2002-01-01..2002-01-31\n2/2002 2002-02-01..2002-02-28\n");
  EXPECT_TRUE(statement.hasDetail);
  EXPECT_TRUE(statement.hasMonths);
  ASSERT_EQ(statement.lines.size(), 4U);
  const StatementLine& first = statement.lines[0];
  EXPECT_EQ(first.type, "Paycheck");
  EXPECT_EQ(first.number, "101");
  EXPECT_EQ(first.name, "Ames, Jo");
  EXPECT_EQ(first.memo, "Wages");
  EXPECT_EQ(first.amount.Text(), "1,000.00");
  EXPECT_EQ(first.section, Section::Expense);
  EXPECT_EQ(first.place, "detail.csv: line 7");
  EXPECT_EQ(statement.lines[3].account, std::vector<std::string>{"Jobs"});
}

TEST(CsvDetail, ReadsAnAccountColumnInPlaceOfHeadings) {
  const ProfitAndLoss statement = ReadProfitAndLoss(
      "b", "Type,Date,Account,Amount\nBill,2002-01-05,Jobs:Fuel,5.00\nPaycheck,2002-03-05,Payroll,7.00\n");
  EXPECT_EQ(AmountListing(statement), "? | Jobs:Fuel | 5.00 0.00 0.00\n? | Payroll | 0.00 0.00 7.00\n");
}

TEST(CsvDetail, ReadsHeadingsWithFullNames) {
  const ProfitAndLoss statement =
      ReadProfitAndLoss("b", ",Type,Date,Amount\nJobs:Fuel\n,Bill,2002-01-05,5.00\nTotal Jobs:Fuel,,,5.00\n");
  EXPECT_EQ(AmountListing(statement), "? | Jobs:Fuel | 5.00\n");
  EXPECT_EQ(statement.accounts[0].names, (std::vector<std::string>{"Jobs", "Fuel"}));
}

TEST(CsvDetail, HasNoMonthThatTheReportCoversInPart) {
  const ProfitAndLoss statement = ReadProfitAndLoss(
      "b", "January 10 through February 28, 2002\nType,Date,Account,Amount\nBill,2002-01-15,Fuel,5.00\n");
  EXPECT_EQ(ColumnListing(statement), "2002-01-10..2002-01-31\n2/2002 2002-02-01..2002-02-28\n");
  EXPECT_FALSE(statement.hasMonths);
}

TEST(CsvDetail, ReportsTotalsThatDoNotAgree) {
  EXPECT_EQ(
      FindingListing(ReadProfitAndLoss(
          "b", Replaced(std::string(detail), "Total Fuel,,,,,,,20.00", "Total Fuel,,,,,,,21.00"))),
      "b: line 13: \"Total Fuel\" is 21.00 in column \"Amount\", but the amounts above it add up to 20.00\n");
}

TEST(QbxmlDetail, ReadsTransactionsBelowTheirHeadings) {
  const ProfitAndLoss statement = ReadProfitAndLoss(
      "a", Replaced(Answer(), "value=\"Total Sales\"", "value=\"Total 4000 &#183; Sales\""));
  EXPECT_EQ(AmountListing(statement), "Income | Sales | 12.50\n");
  EXPECT_EQ(FindingListing(statement), "");
  EXPECT_EQ(statement.basis, "Cash");
  ASSERT_EQ(statement.lines.size(), 2U);
  EXPECT_EQ(statement.lines[0].type, "Invoice");
  EXPECT_EQ(statement.lines[0].name, "Smith & Co");
  EXPECT_EQ(statement.lines[0].number, "12");
  EXPECT_EQ(statement.accounts[0].numbers, std::vector<std::string>{"4000"});
}

TEST(Detail, RefusesWhatItCannotUnderstand) {
  const std::string header = "Type,Date,Account,Amount\n";
  struct Case {
    std::string document;
    std::string_view message;
  };
  const std::vector<Case> cases = {
      {Answer(), "b: row 7: \"Total Sales\" has no line \"Sales\" above it;"},
      {Replaced(Replaced(Answer(), "<ColType>TxnType</ColType>", "<ColType>Class</ColType>"),
                "value=\"Type\"", "value=\"Class\""),
       "b: the detail report has no column \"Type\";"},
      {header + "Bill,soon,Fuel,5.00\n", "b: line 2: \"soon\" is not a date;"},
      {header + "Bill,2002-02-30,Fuel,5.00\n", "b: line 2: \"2002-02-30\" is not a date;"},
      {header + ",2002-01-05,Fuel,5.00\n", "b: line 2: the transaction has no type;"},
      {header + "Bill,2002-01-05,,5.00\n", "b: line 2: the transaction is below no account;"},
      {header + "Bill,2002-01-05,Fuel,five\n", "b: line 2: \"five\" is not an amount;"},
      {"January 2002\n" + header + "Bill,2002-02-05,Fuel,5.00\n",
       "b: line 3: the transaction is not in \"January 2002\";"},
      {header + "Bill,1950-01-05,Fuel,5.00\nBill,2002-01-05,Fuel,5.00\n",
       "b: the report covers more than 120 months;"},
      {"Type,Date,Amount,Amount\nBill,2002-01-05,1,1\n", "b: two columns are titled \"Amount\";"},
      {",Type,Date,Amount\nFuel,Bill,2002-01-05,5.00\n",
       "b: line 2: there are both the label \"Fuel\" and a transaction;"},
      {",Type,Date,Account,Amount\nFuel\n,Bill,2002-01-05,Rent,5.00\nTotal Fuel,,,,5.00\n",
       "b: line 3: the transaction is of the account \"Rent\", but below the heading \"Fuel\";"},
      {",Type,Date,Amount\nFuel\n,Bill,2002-01-05,5.00\nRent\n,Bill,2002-01-05,5.00\nTotal Rent,,,5.00\n",
       "b: line 2: \"Fuel\" does not end with a line \"Total Fuel\";"},
  };
  for (const Case& test : cases) {
    const Error error = tests::ThrownError([&] { ReadProfitAndLoss("b", test.document); });
    EXPECT_EQ(error.Description().substr(0, test.message.size()), test.message);
  }
}

}  // namespace
}  // namespace krnqb::profit_and_loss
