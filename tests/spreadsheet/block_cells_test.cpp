#include "spreadsheet/block_cells.h"

#include <gtest/gtest.h>

#include "plans.h"

namespace krnqb::spreadsheet {
namespace {

using plan_file::PlanBlock;
using tests::Planned;
using Kind = BlockCell::Kind;

PlanBlock Sales(std::string startRow, std::vector<plan_file::PlanRow> rows) {
  return {"db_sales_values_sales", std::move(startRow), std::move(rows)};
}

TEST(BlockCells, ComputeGrowthAndTotalsWhereTheyAre) {
  const BlockCells cells(
      Sales("6", {Planned("Plants", "0.1", "=100 * (1 + B6)"), Planned("Seeds", "*null*", "50"),
                  Planned("Total", "*null*", "=SUM(C6:C7)")}));
  EXPECT_EQ(cells.FirstRow(), 6U);
  EXPECT_EQ(cells.At(0, 2).kind, Kind::Formula);
  EXPECT_DOUBLE_EQ(cells.At(0, 2).number, 110);
  EXPECT_EQ(cells.At(1, 1).kind, Kind::Empty);
  EXPECT_EQ(cells.At(1, 2), (BlockCell{Kind::Number, "50", 50}));
  EXPECT_DOUBLE_EQ(cells.At(2, 2).number, 160);
  EXPECT_EQ(cells.At(2, 13).text, "=SUM(C6:C7)") << "as the plan has it in each column";
}

TEST(BlockCells, LeaveFormulasThatReachOutOfTheBlockAsTexts) {
  const BlockCells cells(Sales("6", {Planned("Plants", "0.1", "=100 * (1 + B5)"),
                                     Planned("Seeds", "0", "=O6"), Planned("Total", "0", "=SUM(C6:C7)")}));
  EXPECT_TRUE(cells.IsUncomputed(0, 2));
  EXPECT_TRUE(cells.IsUncomputed(1, 2));
  EXPECT_TRUE(cells.IsUncomputed(2, 2)) << "a sum over them would lack their amounts";
}

TEST(BlockCells, LeaveCirclesAsTexts) {
  const BlockCells cells(Sales("1", {{"A", "=B2"}, {"B", "=B1"}, {"C", "=B3"}, {"D", "=1"}}));
  for (std::size_t row = 0; row < 3; ++row) EXPECT_TRUE(cells.IsUncomputed(row, 1)) << row;
  EXPECT_EQ(cells.At(3, 1).number, 1);
}

TEST(BlockCells, ComputeFormulasThatReferDownwards) {
  std::vector<plan_file::PlanRow> rows;
  for (int row = 1; row <= 100; ++row) rows.push_back({"Row", "=B" + std::to_string(row + 1) + "+1"});
  rows.push_back({"Last", "1"});
  EXPECT_EQ(BlockCells(Sales("1", rows)).At(0, 1).number, 101);
}

TEST(BlockCells, ComputeNothingWithoutARowToBeginIn) {
  for (const char* startRow : {"", "0", "-3", "x", "5x", "1048576", "99999999999"}) {
    const BlockCells cells(Sales(startRow, {Planned("A", "0", "=1+1"), Planned("B", "0", "2")}));
    EXPECT_FALSE(cells.FirstRow()) << startRow;
    EXPECT_TRUE(cells.IsUncomputed(0, 2)) << startRow;
    EXPECT_EQ(cells.At(1, 2).number, 2) << startRow;
  }
}

TEST(BlockCells, KeepNamesAsTexts) {
  const BlockCells cells(
      Sales("5", {Planned("=1+1", "0", "1"), Planned("12", "0", "1"), Planned("@x", "0", "1")}));
  EXPECT_EQ(cells.At(0, 0), (BlockCell{Kind::Text, "=1+1", 0}));
  EXPECT_EQ(cells.At(1, 0), (BlockCell{Kind::Text, "12", 0}));
  EXPECT_FALSE(cells.IsUncomputed(0, 0));
}

TEST(BlockCells, ReadAmountsAsAutomationDoesAndOtherNumbersOnlyIfPlainlyWritten) {
  const BlockCells amounts(Sales("5", {{"A", "0", "$1,000.50", "(5)", "n/a"}}));
  EXPECT_EQ(amounts.At(0, 2).number, 1000.5);
  EXPECT_EQ(amounts.At(0, 3).number, -5);
  EXPECT_EQ(amounts.At(0, 4).kind, Kind::Text);
  const BlockCells others(
      {"db_general_assumptions", "5", {{"A", "0.28", "-3", "007", "$5", "1e5", "1234567890123456"}}});
  EXPECT_EQ(others.At(0, 1).number, 0.28);
  EXPECT_EQ(others.At(0, 2).number, -3);
  for (std::size_t column = 3; column < 7; ++column)
    EXPECT_EQ(others.At(0, column).kind, Kind::Text) << column;
}

TEST(BlockCells, AreEmptyOutsideTheBlock) {
  const BlockCells cells(Sales("5", {{"A"}, {}}));
  EXPECT_EQ(cells.At(0, 1).kind, Kind::Empty);
  EXPECT_EQ(cells.At(7, 0).kind, Kind::Empty);
  EXPECT_EQ(BlockCells(Sales("5", {})).Width(), 0U);
}

}  // namespace
}  // namespace krnqb::spreadsheet
