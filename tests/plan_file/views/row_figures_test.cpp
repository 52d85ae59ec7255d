#include "plan_file/views/row_figures.h"

#include <gtest/gtest.h>

namespace krnqb::plan_file {
namespace {

PlanRow Planned(const std::string& name, const std::string& month) {
  PlanRow row{name, "0.5"};
  row.insert(row.end(), monthsOfAYear, month);
  return row;
}

PlanRow Actual(const std::string& name, const std::string& month) {
  PlanRow row{name};
  row.insert(row.end(), monthsOfAYear, month);
  return row;
}

PlanContent Plan(std::vector<PlanRow> planned, std::vector<PlanRow> actual) {
  return {{"20000000000000000000000000000600", {{"db_income_range_cat3", "5", std::move(planned)}}},
          {"21000000000000000000000000000600", {{"db_income_range_cat3_actual", "", std::move(actual)}}}};
}

TEST(RowFigures, AreFoundByThePlaceOfThePlannedRow) {
  const auto rows =
      RowFiguresOf(Plan({Planned("Rent", "1"), Planned("Fuel", "1"), Planned("Total", "=SUM(C5:C6)")},
                        {Actual("*null*", "700"), Actual("Gas", "-2.5"), Actual("Total", "=SUM(B5:B6)")}),
                   QBKRN_ALD, FigureSource::ActualCells);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].group, FigureGroup::Expenses);
  EXPECT_EQ(rows[0].row, 1);
  EXPECT_EQ(rows[0].name, "Rent");
  EXPECT_EQ(rows[0].actualName, "");
  EXPECT_EQ(rows[0].months[11], 700);
  EXPECT_EQ(rows[1].row, 2);
  EXPECT_EQ(rows[1].name, "Fuel");
  EXPECT_EQ(rows[1].actualName, "Gas");
  EXPECT_EQ(rows[1].months[0], -2.5);
}

TEST(RowFigures, AreMissingWhereThePlanHasNoAmount) {
  const auto rows = RowFiguresOf(
      Plan({Planned("Rent", "1"), Planned("Fuel", "1"), Planned("Fees", "1"), Planned("Total", "")},
           {Actual("Rent", "*null*"), {"Fuel", "3"}}),
      QBKRN_ALD, FigureSource::ActualCells);
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_TRUE(rows[0].hasActualRow);
  EXPECT_EQ(rows[0].months[0], std::nullopt);
  EXPECT_EQ(rows[1].months[0], 3);
  EXPECT_EQ(rows[1].months[1], std::nullopt);
  EXPECT_FALSE(rows[2].hasActualRow);
}

TEST(RowFigures, OfPlannedRowsAreTheAmountsInsideTheFormulas) {
  const auto rows =
      RowFiguresOf(Plan({Planned("Rent", "=40* (1 + B5)"), Planned("Fuel", "40"), Planned("Total", "")}, {}),
                   QBKRN_ALD, FigureSource::GrowthFormulas);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].months[3], 40) << "before growth";
  EXPECT_EQ(rows[1].months[3], std::nullopt) << "an amount that no import wrote";
}

TEST(RowFigures, AreMissingWithoutTheBlocksOfTheProduct) {
  EXPECT_TRUE(RowFiguresOf(Plan({Planned("Rent", "1"), Planned("Total", "")}, {}), QBKRN_BRI,
                           FigureSource::ActualCells)
                  .empty());
}

}  // namespace
}  // namespace krnqb::plan_file
