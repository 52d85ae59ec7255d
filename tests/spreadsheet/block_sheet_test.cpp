#include "spreadsheet/block_sheet.h"

#include <gtest/gtest.h>

#include "krnqb/error.h"
#include "plans.h"

namespace krnqb::spreadsheet {
namespace {

using tests::Actual;
using tests::CellAt;
using tests::ContentAt;
using tests::Planned;
using tests::SheetsOfBlocks;
using tests::ValueAt;

PlanSheets SalesAndCosts() {
  return SheetsOfBlocks(
      {{"db_sales_values_sales",
        "6",
        {Planned("=Plants", "0.1", "=100 * (1 + B6)"), Planned("Total", "*null*", "=SUM(C6:C6)")}},
       {"db_sales_values_costs", "7", {Planned("Seeds", "0.5", "=10* (1 + B7)")}}},
      {{"db_sales_values_sales_actual", "9", {Actual("*null*", "90"), Actual("Total", "=SUM(B9:B9)")}}});
}

TEST(SheetOfABlock, HasItsRowsWhereTheFormulasMeanThem) {
  const PlanSheets sheets = SalesAndCosts();
  const Sheet sheet = SheetOfBlock(sheets, 0);
  EXPECT_EQ(sheet.name, "Planned sales");
  EXPECT_EQ(ContentAt(sheet, 5, 0), "=Plants");
  EXPECT_TRUE(std::holds_alternative<std::string>(CellAt(sheet, 5, 0)->content))
      << "a name is never a formula";
  EXPECT_EQ(ContentAt(sheet, 5, 1), "0.1");
  EXPECT_EQ(CellAt(sheet, 5, 1)->style, CellStyle::Rate);
  EXPECT_EQ(ContentAt(sheet, 5, 2), "=100 * (1 + B6)");
  EXPECT_DOUBLE_EQ(ValueAt(sheet, 5, 2), 110);
  EXPECT_EQ(ContentAt(sheet, 6, 2), "=SUM(C6:C6)");
  EXPECT_EQ(CellAt(sheet, 6, 2)->style, CellStyle::TotalAmount);
  EXPECT_EQ(ContentAt(sheet, 4, 2), "Jan");
  EXPECT_EQ(sheet.frozenRows, 5U);
}

TEST(SheetOfABlock, IsNotDisturbedByABlockInTheSameRows) {
  const Sheet costs = SheetOfBlock(SalesAndCosts(), 1);
  EXPECT_EQ(ContentAt(costs, 6, 0), "Seeds");
  EXPECT_EQ(ContentAt(costs, 6, 2), "=10* (1 + B7)");
  EXPECT_DOUBLE_EQ(ValueAt(costs, 6, 2), 15);
}

TEST(SheetOfABlock, HasTheSumOfTheYear) {
  const Sheet sheet = SheetOfBlock(SalesAndCosts(), 0);
  EXPECT_EQ(ContentAt(sheet, 4, 14), "Year");
  EXPECT_EQ(ContentAt(sheet, 5, 14), "=SUM(C6:N6)");
  EXPECT_DOUBLE_EQ(ValueAt(sheet, 5, 14), 1320);
}

TEST(SheetOfABlock, HasTheActualMonthsBesideThePlannedOnes) {
  const Sheet sheet = SheetOfBlock(SalesAndCosts(), 0);
  EXPECT_EQ(ContentAt(sheet, 4, 16), "Actual Jan");
  EXPECT_EQ(ContentAt(sheet, 5, 16), "='Actual sales'!B9");
  EXPECT_DOUBLE_EQ(ValueAt(sheet, 5, 16), 90);
  EXPECT_EQ(ContentAt(sheet, 5, 27), "='Actual sales'!M9");
  EXPECT_DOUBLE_EQ(ValueAt(sheet, 5, 28), 1080);
  EXPECT_EQ(sheet.pageBreak, 16);
}

TEST(SheetOfABlock, NamesRowsWithoutANameAfterThePlannedOnes) {
  const Sheet actual = SheetOfBlock(SalesAndCosts(), 2);
  EXPECT_EQ(actual.name, "Actual sales");
  EXPECT_EQ(ContentAt(actual, 8, 0), "(=Plants)");
  EXPECT_EQ(ContentAt(actual, 8, 13), "=SUM(B9:M9)");
}

TEST(SheetOfABlock, KeepsItsRowsIfThereIsNoRoomAboveThem) {
  for (const auto& [startRow, heading] : {std::pair{"1", 2U}, std::pair{"2", 0U}, std::pair{"3", 1U}}) {
    const PlanSheets sheets =
        SheetsOfBlocks({{"db_sales_values_sales",
                         startRow,
                         {Planned("A", "1", std::string("=1 * (1 + B") + startRow + ")")}}});
    const Sheet sheet = SheetOfBlock(sheets, 0);
    const std::uint32_t row = static_cast<std::uint32_t>(startRow[0] - '1');
    EXPECT_EQ(ContentAt(sheet, row, 0), "A") << startRow;
    EXPECT_EQ(ValueAt(sheet, row, 2), 2) << startRow;
    EXPECT_EQ(ContentAt(sheet, heading, 2), "Jan") << startRow;
  }
}

TEST(SheetOfABlock, HidesTheRowsAboveABlockFarDown) {
  const PlanSheets sheets = SheetsOfBlocks({{"db_sales_values_sales", "500", {Planned("A", "0", "1")}}});
  const Sheet sheet = SheetOfBlock(sheets, 0);
  EXPECT_EQ(sheet.hiddenRows, (std::pair{3U, 498U}));
  EXPECT_EQ(ContentAt(sheet, 498, 0), "Name");
  EXPECT_EQ(ContentAt(sheet, 499, 0), "A");
}

TEST(SheetOfABlock, ShowsAnEmptyBlockAndOneWithOtherColumns) {
  const PlanSheets sheets = SheetsOfBlocks(
      {{"db_sales_values_sales", "5", {}}, {"db_general_assumptions", "4", {{"Tax rate", "0.28", "x"}}}});
  EXPECT_EQ(ContentAt(SheetOfBlock(sheets, 0), 4, 0), "(no rows)");
  const Sheet other = SheetOfBlock(sheets, 1);
  EXPECT_EQ(other.name, "db_general_assumptions");
  EXPECT_EQ(ContentAt(other, 2, 1), "Column B");
  EXPECT_EQ(ContentAt(other, 3, 1), "0.28");
  EXPECT_EQ(CellAt(other, 3, 1)->style, CellStyle::Number);
}

TEST(SheetsOfAPlan, WarnOfWhatTheyShowOtherwise) {
  const PlanSheets sheets =
      SheetsOfBlocks({{"db_sales_values_sales",
                       "6",
                       {Planned("A", "0", "=C20*2"), Planned("B", "0", std::string(40'000, 'x'))}},
                      {"db_sales_values_costs", "none", {Planned("C", "0", "1")}}},
                     {{"db_sales_values_sales_actual", "6", {Actual("A", "1")}}});
  ASSERT_EQ(sheets.warnings.size(), 15U);
  EXPECT_EQ(sheets.warnings[0].where, "Planned sales, C6 to N6");
  EXPECT_EQ(sheets.warnings[1].where, "Planned sales, C7");
  EXPECT_EQ(sheets.warnings[13].what,
            "its startrow \"none\" is not a row of a sheet: it begins in row 5, and its formulas are texts");
  EXPECT_EQ(sheets.warnings[14].what,
            "has 2 rows and Actual sales has 1: actual amounts may be beside the wrong planned ones");
}

TEST(SheetsOfAPlan, RefuseABlockThatIsTooWide) {
  EXPECT_THROW(SheetsOfBlocks({{"wide", "5", {plan_file::PlanRow(16'384, "1")}}}), Error);
  EXPECT_NO_THROW(SheetsOfBlocks({{"wide", "5", {plan_file::PlanRow(16'000, "1")}}}));
}

TEST(ReferenceTo, QuotesTheNameOfTheSheet) {
  EXPECT_EQ(ReferenceTo("Owner's sales", 5, 1), "'Owner''s sales'!B6");
}

}  // namespace
}  // namespace krnqb::spreadsheet
