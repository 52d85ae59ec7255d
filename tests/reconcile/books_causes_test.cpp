#include "reconcile/books_causes.h"

#include <gtest/gtest.h>

#include "profit_and_loss/merging.h"
#include "profit_and_loss/reading.h"
#include "reconcile/amounts.h"
#include "thrown_error.h"

namespace krnqb::reconcile {
namespace {

constexpr YearMonth start{.year = 2002, .month = 1};

// A CSV report of the year with one amount for each account.
std::string YearReport(const std::string& rows) {
  return "Profit & Loss\nJanuary through December 2002\n,Jan - Dec 02\nExpense,\n" + rows;
}

class AddingBooks : public testing::Test {
 protected:
  AddingBooks() { Ledger("Rent", 100); }

  void Ledger(std::string_view account, std::int64_t units) {
    const std::size_t line = table.LineOf(Group::Expenses, account);
    table.At(line).months[0].ledger = Units(units);
    posted.push_back({.line = static_cast<std::uint32_t>(line), .kindRead = true, .amount = Units(units)});
  }
  BooksPeriods Add(const std::string& document) {
    return AddBooks(table, profit_and_loss::ReadProfitAndLoss("books", document), start, &posted);
  }
  const MonthAmounts& Month(std::string_view account) {
    return table.At(table.LineOf(Group::Expenses, account)).months[0];
  }

  WorkTable table;
  std::vector<PostedEntry> posted;
};

TEST_F(AddingBooks, TakesTheLedgerForTheBooks) {
  TakeLedgerAsBooks(table);
  EXPECT_EQ(Month("Rent").books, Units(100));
}

TEST_F(AddingBooks, OfAYearAreInTheFirstMonth) {
  EXPECT_EQ(Add(YearReport("  Rent,100.00\n  Payroll,\"2,214.80\"\n")), BooksPeriods::Year);
  EXPECT_EQ(Month("Rent").books, Units(100));
  EXPECT_EQ(CausesOf(Month("Rent")), "");
  EXPECT_EQ(Month("payroll").books.PlainText(), "2214.80");
  EXPECT_EQ(CausesOf(Month("Payroll")), "not-loaded -2214.80");
}

TEST_F(AddingBooks, AddSubAccountsToTheirTopLevelAccount) {
  Add(YearReport("  Rent,\n    Office,60.00\n    Rent - Other,40.00\n  Total Rent,100.00\n"));
  EXPECT_EQ(Month("Rent").books, Units(100));
}

TEST_F(AddingBooks, OfMonthsAreInTheirMonths) {
  std::string heading;
  for (const char* month :
       {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}) {
    heading += std::string(",") + month + " 02";
  }
  EXPECT_EQ(Add(heading + "\nExpense,,,,,,,,,,,,\n  Rent,90.00,10.00,,,,,,,,,,\n"), BooksPeriods::Months);
  EXPECT_EQ(CausesOf(Month("Rent")), "not-loaded 10.00");
  EXPECT_EQ(CausesOf(table.At(0).months[1]), "not-loaded -10.00");
}

TEST_F(AddingBooks, OfAnotherYearAreRefused) {
  const Error error = tests::ThrownError(
      [&] { Add("Profit & Loss\nJanuary through December 2001\n,Jan - Dec 01\nExpense,\n  Rent,100.00\n"); });
  EXPECT_EQ(error.Number(), error_number::typeMismatch);
  EXPECT_NE(error.Description().find("does not cover the twelve months from 2002-01"), std::string::npos)
      << error.Description();
}

TEST_F(AddingBooks, WithoutSectionsAreFoundByTheirAccounts) {
  Add("Profit & Loss\nJanuary through December 2002\n,Jan - Dec 02\nRent,100.00\n");
  EXPECT_EQ(Month("Rent").books, Units(100));
  table.LineOf(Group::Sales, "Rent");
  const Error both = tests::ThrownError(
      [&] { Add("Profit & Loss\nJanuary through December 2002\n,Jan - Dec 02\nRent,100.00\n"); });
  EXPECT_NE(both.Description().find("in which section Rent is"), std::string::npos) << both.Description();
  const Error unknown = tests::ThrownError(
      [&] { Add("Profit & Loss\nJanuary through December 2002\n,Jan - Dec 02\nGifts,100.00\n"); });
  EXPECT_NE(unknown.Description().find("Gifts"), std::string::npos) << unknown.Description();
}

TEST_F(AddingBooks, OfADetailReportNameTheTypesThatAreNotLoaded) {
  Ledger("Fuel", 30);
  EXPECT_EQ(Add("Profit & Loss Detail\nJanuary through December 2002\n"
                ",Type,Date,Num,Name,Memo,Amount\n"
                "Expense,,,,,,\n"
                "Rent,,,,,,\n"
                ",Check,01/05/2002,101,Landlord,,100.00\n"
                "Total Rent,,,,,,100.00\n"
                "Payroll,,,,,,\n"
                ",Paycheck,01/31/2002,,Ann,,20.00\n"
                ",Paycheck,01/31/2002,,Bob,,25.00\n"
                ",General Journal,01/31/2002,,,,5.00\n"
                "Total Payroll,,,,,,50.00\n"),
            BooksPeriods::Months);
  EXPECT_EQ(CausesOf(Month("Rent")), "");
  EXPECT_EQ(CausesOf(Month("Payroll")), "not-loaded (General Journal) -5.00; not-loaded (Paycheck) -45.00");
  EXPECT_EQ(CausesOf(Month("Fuel")), "not-in-books 30.00");
}

}  // namespace
}  // namespace krnqb::reconcile
