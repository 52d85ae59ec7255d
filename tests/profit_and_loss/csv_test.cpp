#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "profit_and_loss/listing.h"
#include "profit_and_loss/reading.h"
#include "thrown_error.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::string_view nursery = R"(Greenleaf Nursery
Profit & Loss
January through February 2002
Accrual Basis
,Jan 02,Feb 02,TOTAL
   Ordinary Income/Expense
      Income
         Sales
            Plants,"1,000.00",200.50,"1,200.50"
            Sales - Other,10.00,,10.00
         Total Sales,"1,010.00",200.50,"1,210.50"
         Sales Discounts,(5.00),$0.00,(5.00)
      Total Income,"1,005.00",200.50,"1,205.50"
      Cost of Goods Sold
         Cost of Goods Sold,300.00,100.00,400.00
      Total COGS,300.00,100.00,400.00
   Gross Profit,705.00,100.50,805.50
      Expense
         Rent,400.00,400.00,800.00
      Total Expense,400.00,400.00,800.00
Net Ordinary Income,305.00,-299.50,5.50
   Other Income/Expense
      Other Income
         Interest,1.25,,1.25
      Total Other Income,1.25,,1.25
      Other Expense
         Fines,,2.00,2.00
      Total Other Expense,,2.00,2.00
Net Other Income,1.25,-2.00,-0.75
Net Income,306.25,-301.50,4.75
)";

constexpr std::string_view nurseryAmounts =
    "Income | Sales:Plants | 1,000.00 200.50\n"
    "Income | Sales | 10.00 0.00\n"
    "Income | Sales Discounts | -5.00 0.00\n"
    "Cost of Goods Sold | Cost of Goods Sold | 300.00 100.00\n"
    "Expense | Rent | 400.00 400.00\n"
    "Other Income | Interest | 1.25 0.00\n"
    "Other Expense | Fines | 0.00 2.00\n";

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

std::string WithoutIndentation(std::string_view text) {
  std::string result;
  bool lineBegin = true;
  for (const char character : text) {
    if (!lineBegin || character != ' ') result += character;
    lineBegin = character == '\n' || (lineBegin && character == ' ');
  }
  return result;
}

// Puts labels indented by three blanks a level into one column a level.
std::string WithOneColumnALevel(std::string_view text) {
  std::string result;
  std::size_t at = 0;
  bool inTable = false;
  while (at < text.size()) {
    const std::size_t end = text.find('\n', at);
    std::string_view line = text.substr(at, end - at);
    at = end + 1;
    const std::size_t blanks = line.find_first_not_of(' ');
    line.remove_prefix(blanks);
    inTable = inTable || line.starts_with(',');
    const std::size_t level = blanks / 3;
    const std::size_t labelEnd = std::min(line.find(','), line.size());
    result += std::string(level, ',');
    result += line.substr(0, labelEnd);
    if (inTable) result += std::string(4 - level, ',');
    result += line.substr(labelEnd);
    result += '\n';
  }
  return result;
}

void ExpectNursery(const std::string& document) {
  const ProfitAndLoss statement = ReadProfitAndLoss("books.csv", document);
  EXPECT_EQ(AmountListing(statement), nurseryAmounts);
  EXPECT_EQ(ColumnListing(statement), "1/2002 2002-01-01..2002-01-31\n2/2002 2002-02-01..2002-02-28\n");
  EXPECT_EQ(FindingListing(statement), "");
  EXPECT_EQ(statement.title, "Profit & Loss");
  EXPECT_EQ(statement.company, "Greenleaf Nursery");
  EXPECT_EQ(statement.basis, "Accrual");
  EXPECT_TRUE(statement.hasMonths);
  EXPECT_FALSE(statement.hasDetail);
}

TEST(CsvSummary, ReadsAnIndentedReport) {
  ExpectNursery(std::string(nursery));
}

TEST(CsvSummary, ReadsOneColumnALevel) {
  ExpectNursery(WithOneColumnALevel(nursery));
}

TEST(CsvSummary, ReadsAReportWithoutIndentation) {
  ExpectNursery(WithoutIndentation(nursery));
}

TEST(CsvSummary, ReadsLineEndsAndByteOrderMarks) {
  ExpectNursery("\xEF\xBB\xBF" + Replaced(std::string(nursery), "\n", "\r\n"));
}

TEST(CsvSummary, ReadsOtherWordsOfTheSameReport) {
  std::string document = Replaced(std::string(nursery), "Total Sales", "Total for Sales");
  document = Replaced(document, "Jan 02,Feb 02", "January 2002,2002-02");
  ExpectNursery(Replaced(document, "Total Expense", "TOTAL EXPENSE"));
}

TEST(CsvSummary, ReadsSemicolonsWithEitherDecimalMark) {
  // A comma between quotation marks is a thousands separator there.
  std::string document = Replaced(std::string(nursery), "\"1,", "\"1_");
  document = Replaced(document, ",", ";");
  ExpectNursery(Replaced(document, "_", ","));
  document = Replaced(document, ".", ",");
  ExpectNursery(Replaced(document, "_", "."));
}

TEST(CsvSummary, ReadsWindows1252) {
  const ProfitAndLoss statement =
      ReadProfitAndLoss("books.csv", "Account,Jan 02\n60200 \xB7 Caf\xE9 \x96 Bar,5.00\n");
  EXPECT_EQ(AmountListing(statement), "? | Caf\u00E9 \u2013 Bar | 5.00\n");
  EXPECT_EQ(statement.accounts.front().numbers, std::vector<std::string>{"60200"});
}

TEST(CsvSummary, ReadsQuotationMarksAndLineEndsInCells) {
  const std::string_view document =
      "\"Profit & Loss\",\r\nAccount,\"Jan 02\"\r\n \"The \"\"Best\"\"\r\nTea\" ,\"5.00\"\r\nRent,x\r\n";
  const Error error = tests::ThrownError([&] { ReadProfitAndLoss("b", document); });
  EXPECT_EQ(error.Description().substr(0, 12), "b: line 5: \"") << error.Description();
  EXPECT_EQ(AmountListing(ReadProfitAndLoss("b", document.substr(0, document.size() - 8))),
            "? | The \"Best\" Tea | 5.00\n");
}

TEST(CsvSummary, ReadsTypedTables) {
  const ProfitAndLoss statement = ReadProfitAndLoss(
      "typed.csv", "Account,2002-01,2002-02\nSales:Plants,5,\n60200 - Rent,-,7\nTotal,5,7\n");
  EXPECT_EQ(AmountListing(statement), "? | Sales:Plants | 5.00 0.00\n? | 60200 - Rent | 0.00 7.00\n");
  EXPECT_EQ(FindingListing(statement), "");
}

TEST(CsvSummary, TakesHyphensForNumbersOnlyIfAllAccountsHaveThem) {
  EXPECT_EQ(AmountListing(ReadProfitAndLoss("b", ",Jan 02\n60200 - Rent,5\n60300 - Phone,6\n")),
            "? | Rent | 5.00\n? | Phone | 6.00\n");
  EXPECT_EQ(AmountListing(ReadProfitAndLoss("b", ",Jan 02\n401 - K Plan,5\n")), "? | 401 - K Plan | 5.00\n");
}

TEST(CsvSummary, ReadsATotalOnly) {
  const std::vector<std::string_view> headers = {",Jan - Dec 02", ",TOTAL", "Account,Amount"};
  for (const std::string_view header : headers) {
    const ProfitAndLoss statement =
        ReadProfitAndLoss("b", "Profit and Loss\nJanuary through December 2002\nCash Basis\n" +
                                   std::string(header) + "\nRent,5.00\n");
    EXPECT_EQ(ColumnListing(statement), "2002-01-01..2002-12-31\n") << header;
    EXPECT_EQ(AmountListing(statement), "? | Rent | 5.00\n") << header;
    EXPECT_EQ(statement.basis, "Cash");
    EXPECT_FALSE(statement.hasMonths);
  }
  EXPECT_EQ(ColumnListing(ReadProfitAndLoss("b", ",Total\nRent,5.00\n")), "?\n");
}

TEST(CsvSummary, ReadsTheBasisBelowTheReport) {
  EXPECT_EQ(ReadProfitAndLoss("b", ",Jan 02\nRent,5.00\n\n\"Cash Basis Monday, March 4, 2002\"\n").basis,
            "Cash");
}

TEST(CsvSummary, ReadsAmountsOfParentsOnTheirOwnLines) {
  const ProfitAndLoss statement = ReadProfitAndLoss("b",
                                                    ",Jan 02\nExpenses\n  Jobs,3.00\n    Fuel,4.00\n  Total "
                                                    "for Jobs,7.00\nTotal Expenses,7.00\nNet Income,-7.00\n");
  EXPECT_EQ(AmountListing(statement), "Expense | Jobs | 3.00\nExpense | Jobs:Fuel | 4.00\n");
  EXPECT_EQ(FindingListing(statement), "");
}

TEST(CsvSummary, IgnoresLinesOfDashes) {
  const ProfitAndLoss statement = ReadProfitAndLoss(
      "b",
      ",Jan 02\nExpense\n  Jobs\n    Fuel,4.00\n,-\n    Tax,1.00\n  Total Jobs,5.00\nTotal Expense,5.00\n");
  EXPECT_EQ(AmountListing(statement), "Expense | Jobs:Fuel | 4.00\nExpense | Jobs:Tax | 1.00\n");
}

TEST(CsvSummary, KeepsAccountsThatAreNamedLikeASection) {
  const std::string_view document =
      ",Jan 02\nIncome\nOther Income\nGrants,5.00\nTotal Other Income,5.00\nTotal Income,5.00\nNet "
      "Income,5.00\n";
  EXPECT_EQ(AmountListing(ReadProfitAndLoss("b", document)), "Income | Other Income:Grants | 5.00\n");
  EXPECT_EQ(FindingListing(ReadProfitAndLoss("b", document)), "");
}

TEST(CsvSummary, ReportsTotalsThatDoNotAgree) {
  struct Case {
    std::string_view from;
    std::string_view to;
    std::string_view finding;
  };
  const std::vector<Case> cases = {
      {"Total Sales,\"1,010.00\"", "Total Sales,\"1,000.00\"",
       "books.csv: line 11: \"Total Sales\" is 1,000.00 in column \"Jan 02\", but the amounts above it add "
       "up to "
       "1,010.00\n"},
      {"Total COGS,300.00,100.00", "Total COGS,300.00,100.01",
       "books.csv: line 16: \"Total COGS\" is 100.01 in column \"Feb 02\", but the amounts above it add up "
       "to "
       "100.00\n"},
      {"Gross Profit,705.00", "Gross Profit,705.10",
       "books.csv: line 17: \"Gross Profit\" is 705.10 in column \"Jan 02\", but the amounts above it add up "
       "to "
       "705.00\n"},
      {"Net Other Income,1.25", "Net Other Income,-1.25",
       "books.csv: line 29: \"Net Other Income\" is -1.25 in column \"Jan 02\", but the amounts above it add "
       "up to "
       "1.25\n"},
      {"-301.50,4.75", "-301.50,4.76",
       "books.csv: line 30: \"Net Income\" is 4.76 in column \"TOTAL\", but the amounts above it add up to "
       "4.75\n"},
      {"Fines,,2.00,2.00", "Fines,,2.00,3.00",
       "books.csv: line 27: the amounts of \"Fines\" add up to 2.00, but column \"TOTAL\" has 3.00\n"},
      {"Net Income,306.25,-301.50,4.75\n", "",
       "books.csv: the report does not end with \"Net Income\", so it may be cut off\n"},
  };
  for (const Case& test : cases) {
    const std::string document = Replaced(std::string(nursery), test.from, test.to);
    const std::string findings = FindingListing(ReadProfitAndLoss("books.csv", document));
    EXPECT_EQ(findings.substr(0, test.finding.size()), test.finding);
  }
}

TEST(CsvSummary, CountsFindingsBeyondAHundred) {
  std::string document = ",Jan 02,TOTAL\n";
  for (int account = 0; account < 150; ++account)
    document += "Account " + std::to_string(account) + ",1.00,2.00\n";
  const ProfitAndLoss statement = ReadProfitAndLoss("b", document);
  EXPECT_EQ(statement.findings.size(), 101U);
  EXPECT_EQ(statement.findings.back(), "b: 50 more findings are left out");
}

TEST(CsvSummary, RefusesWhatItCannotUnderstand) {
  struct Case {
    std::string_view document;
    std::string_view message;
  };
  const std::vector<Case> cases = {
      {"Rent,5.00\n", "b: no line has column titles"},
      {"Account\tJan 02\nRent\t5.00\n", "b: no line has column titles"},
      {",Jan 02,Budget\nRent,5.00,6.00\n",
       "b: column \"Budget\" is neither a month such as \"Jan 2002\" nor a total; export"},
      {",Jan 02,Jan 2002\nRent,5.00,6.00\n",
       "b: the columns \"Jan 02\" and \"Jan 2002\" cover the same time;"},
      {",Jan 02,Jan - Mar 02\nRent,5.00,6.00\n",
       "b: the columns \"Jan 02\" and \"Jan - Mar 02\" cover the same"},
      {",Jan 02\nRent,5.00,6.00\n", "b: line 2: \"6.00\" is in a column without a title;"},
      {",Jan 02\nRent,five\n", "b: line 2: \"five\" is not an amount;"},
      {",Jan 02\nRent,5.00\nRENT,6.00\n",
       "b: line 3: the account \"Rent\" also has the amounts of b: line 2;"},
      {",Jan 02\n,5.00\n", "b: line 2: there are amounts without an account;"},
      {",,Jan 02\nRent,Office,5.00\n", "b: line 2: there are two labels, \"Rent\" and \"Office\";"},
      {",Jan 02\nTotal Rent,5.00\n", "b: line 2: \"Total Rent\" has no line \"Rent\" above it;"},
      {",Jan 02\nIncome,5.00\n", "b: line 2: \"Income\" is the heading of a section, but has amounts;"},
      {",Jan 02\nIncome\nSales,5.00\nTotal Income,5.00\nOperating Profit,5.00\n",
       "b: line 5: \"Operating Profit\" is in no section;"},
      {",Jan 02\nJobs\nFuel,4.00\nTax\nVAT,1.00\nTotal Jobs,5.00\nTotal Tax,1.00\n",
       "b: line 4: \"Tax\" does not end with a line \"Total Tax\";"},
      {",Jan 02\nJobs,3.00\n  Fuel,4.00\nRent,1.00\n",
       "b: line 2: \"Jobs\" has amounts and sub-accounts, but no line"},
      {",Jan 02\nJobs,4.00\n  Fuel,4.00\nTotal Jobs,4.00\n",
       "b: line 2: \"Jobs\" has amounts and sub-accounts, which together are not \"Total Jobs\";"},
      {",Jan 02\nJobs\nFuel,4.00\nJobs - Other,1.00\n",
       "b: line 2: \"Jobs\" has no line \"Total Jobs\", so it is unclear which accounts are below it;"},
      {",Jan 02\nSales::Plants,4.00\n", "b: line 2: \"Sales::Plants\" is not the name of an account;"},
      {";Jan 02\nRent;1.234\n", "b: line 2: \"1.234\" is ambiguous"},
      {";Jan 02\nRent;1,50\nFuel;1.50\n", "b: line 3: \"1.50\" uses another decimal mark"},
      {",Jan 02\n\"Rent,5.00\n",
       "b: line 2: a quotation mark is not closed, so the document may be cut off;"},
      {",Jan 02\n\"Rent\"x,5.00\n", "b: line 2: there is text after a quoted cell;"},
      {"Balance Sheet\n,Jan 02\nCash,5.00\n", "b: the report is \"Balance Sheet\", not a profit and loss;"},
      {"<!DOCTYPE html><html></html>", "b: the document is an HTML page, not a report;"},
      {"\n<html><body/></html>", "b: the document is an HTML page, not a report;"},
      {",Jan 02\nRent,9999999999999999.00\n", "b: line 2: \"9999999999999999.00\" is out of range"},
  };
  for (const Case& test : cases) {
    const Error error = tests::ThrownError([&] { ReadProfitAndLoss("b", test.document); });
    EXPECT_EQ(error.Description().substr(0, test.message.size()), test.message) << test.document;
    EXPECT_EQ(error.Number(), error_number::typeMismatch);
    EXPECT_EQ(error.Description().find('\n'), std::string::npos);
  }
}

TEST(CsvSummary, ReportsSumsOutOfRangeWithTheDocument) {
  const Error error = tests::ThrownError(
      [] { ReadProfitAndLoss("b", ",Jan 02\nRent,9000000000000.00\nFuel,9000000000000.00\n"); });
  EXPECT_EQ(error.Number(), error_number::overflow);
  EXPECT_EQ(error.Description(),
            "b: the amounts add up to more than 9 trillion; correct them in the document");
}

TEST(CsvSummary, LimitsTheDepthOfAccounts) {
  std::string document = ",Jan 02\n";
  for (std::size_t level = 0; level < 40; ++level)
    document += std::string(level, ' ') + "A" + std::to_string(level) + "\n";
  const Error error = tests::ThrownError([&] { ReadProfitAndLoss("b", document); });
  EXPECT_EQ(error.Description().substr(0, 47), "b: line 34: accounts are nested more than 32 de");
}

TEST(CsvSummary, LimitsTheCellsOfALine) {
  const Error error =
      tests::ThrownError([] { ReadProfitAndLoss("b", ",Jan 02\nRent" + std::string(600, ',') + "5.00\n"); });
  EXPECT_EQ(error.Description().substr(0, 43), "b: line 2: the line has more than 512 cells");
}

TEST(CsvSummary, LimitsTheAccountsAndColumns) {
  std::string accounts = ",Jan 02\n";
  for (int account = 0; account <= 20'000; ++account) accounts += "A" + std::to_string(account) + ",1\n";
  const Error error = tests::ThrownError([&] { ReadProfitAndLoss("b", accounts); });
  EXPECT_EQ(error.Description().substr(0, 54), "b: line 20002: the report has more than 20000 accounts");
  std::string columns = "Account";
  for (int year = 1990; year < 2001; ++year) {
    for (int month = 1; month <= 12; ++month)
      columns += "," + std::to_string(year) + (month < 10 ? "-0" : "-") + std::to_string(month);
  }
  const Error tooMany = tests::ThrownError([&] { ReadProfitAndLoss("b", columns + "\nRent,1.00\n"); });
  EXPECT_EQ(tooMany.Description().substr(0, 53), "b: the report has more than 120 columns of amounts; e");
}

TEST(CsvSummary, TakesTimeInProportionToTheDocument) {
  // Every heading has a total: a search among all of them would take minutes.
  std::string document = ",Jan 02\n";
  for (int account = 0; account < 15'000; ++account) {
    const std::string name = "A" + std::to_string(account);
    document.append(name).append("\nB,1.00\nTotal ").append(name).append(",1.00\n");
  }
  EXPECT_EQ(ReadProfitAndLoss("b", document).accounts.size(), 15'000U);
}

}  // namespace
}  // namespace krnqb::profit_and_loss
