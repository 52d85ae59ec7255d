#include "cli/import/summary/year_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "support/display_width.h"

namespace krnqb::cli {
namespace {

using plan_file::GroupFigures;
using plan_file::YearAmounts;

GroupFigures Monthly(double amount) {
  GroupFigures figures;
  figures.amounts.months.fill(amount);
  return figures;
}

FiguresChange Change(double sales) {
  FiguresChange change;
  change.before.groups = {Monthly(100), Monthly(40), Monthly(25)};
  change.after.groups = {Monthly(sales), Monthly(40), Monthly(25.5)};
  return change;
}

constexpr YearMonth july{2002, 7};

TEST(YearTable, ShowsEachGroupBeforeAndAfterWithTheSumOfTheYear) {
  EXPECT_EQ(
      YearTable({"Planned amounts", july}, Change(110), july, 132),
      "Planned amounts, July 2002 to June 2003:\n"
      "             Jul     Aug     Sep     Oct     Nov     Dec     Jan     Feb     Mar     Apr     May     "
      "Jun      Year\n"
      "Sales\n"
      "  before  100.00  100.00  100.00  100.00  100.00  100.00  100.00  100.00  100.00  100.00  100.00  "
      "100.00  1,200.00\n"
      "  after   110.00  110.00  110.00  110.00  110.00  110.00  110.00  110.00  110.00  110.00  110.00  "
      "110.00  1,320.00\n"
      "Cost of goods\n"
      "  same     40.00   40.00   40.00   40.00   40.00   40.00   40.00   40.00   40.00   40.00   40.00   "
      "40.00    480.00\n"
      "Expenses\n"
      "  before   25.00   25.00   25.00   25.00   25.00   25.00   25.00   25.00   25.00   25.00   25.00   "
      "25.00    300.00\n"
      "  after    25.50   25.50   25.50   25.50   25.50   25.50   25.50   25.50   25.50   25.50   25.50   "
      "25.50    306.00\n"
      "Result\n"
      "  before   35.00   35.00   35.00   35.00   35.00   35.00   35.00   35.00   35.00   35.00   35.00   "
      "35.00    420.00\n"
      "  after    44.50   44.50   44.50   44.50   44.50   44.50   44.50   44.50   44.50   44.50   44.50   "
      "44.50    534.00\n");
}

TEST(YearTable, IsSplitIntoHalvesOnEightyColumns) {
  const std::string text = YearTable({"Planned amounts", july}, Change(110), july, 80);
  EXPECT_NE(text.find("Planned amounts, July 2002 to June 2003:\n"
                      "             Jul     Aug     Sep     Oct     Nov     Dec\n"
                      "Sales\n"
                      "  before  100.00  100.00  100.00  100.00  100.00  100.00\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("\n"
                      "\n"
                      "             Jan     Feb     Mar     Apr     May     Jun      Year\n"
                      "Sales\n"
                      "  before  100.00  100.00  100.00  100.00  100.00  100.00  1,200.00\n"),
            std::string::npos)
      << text;
}

TEST(YearTable, SetsColumnsCloserBeforeItRoundsToWholeUnits) {
  const std::string close = YearTable({"Planned", july}, Change(20'000), july, 80);
  EXPECT_NE(close.find("\n  after  20,000.00 20,000.00 "), std::string::npos) << close;
  EXPECT_EQ(close.find("whole units"), std::string::npos);
  const std::string whole = YearTable({"Planned", july}, Change(1'234'567.6), july, 80);
  EXPECT_EQ(whole.find("Planned, July 2002 to June 2003, in whole units:\n"), 0U) << whole;
  EXPECT_NE(whole.find(" 1,234,568 1,234,568 "), std::string::npos) << whole;
  EXPECT_EQ(whole.find('.'), std::string::npos) << whole;
}

TEST(YearTable, FitsIntoAnyWidth) {
  for (const std::size_t width : {20U, 40U, 79U, 80U, 100U, 140U}) {
    for (const double sales : {0.0, 99.0, 12'345.67, 9'876'543.21, -1E+12, 1E+300}) {
      std::istringstream lines(YearTable({"Plan", july}, Change(sales), july, width));
      for (std::string line; std::getline(lines, line);)
        EXPECT_LE(DisplayWidth(line), std::max<std::size_t>(width, 29)) << line;
    }
  }
}

TEST(YearTable, WrapsATitleThatIsLongerThanALine) {
  EXPECT_EQ(YearTable({"Planned amounts", july}, Change(1'234'567), july, 40)
                .find("Planned amounts, July 2002 to June 2003,\n"
                      "    in whole units:\n"),
            0U);
}

TEST(YearTable, NamesRowsThatItsSumsLack) {
  FiguresChange change = Change(110);
  change.before.groups[0]->unreadRows = {"Plants"};
  change.before.groups[2]->unreadRows = {"Rent"};
  change.after.groups[2]->unreadRows = {"Rent", "Fuel\n"};
  const std::string text = YearTable({"Planned", july}, change, july, 80);
  EXPECT_TRUE(text.ends_with(
      "\nNot included: formulas that refer to other cells, in the rows Plants, Rent,\n    Fuel \n"))
      << text;
}

TEST(YearTable, LeavesOutGroupsThatThePlanDoesNotHave) {
  FiguresChange change = Change(110);
  change.before.groups[1].reset();
  change.after.groups[1].reset();
  EXPECT_EQ(YearTable({"Planned", july}, change, july, 80).find("Cost of goods"), std::string::npos);
}

}  // namespace
}  // namespace krnqb::cli
