#include "plan_file/views/amounts.h"

#include <gtest/gtest.h>

namespace krnqb::plan_file {
namespace {

PlanRow WithMonths(PlanRow row, const std::string& month) {
  row.insert(row.end(), monthsOfAYear, month);
  return row;
}

TEST(KindOfBlock, FollowsFromItsId) {
  EXPECT_EQ(KindOfBlock("db_sales_values_sales"), BlockKind::Planned);
  EXPECT_EQ(KindOfBlock("db_contributionmargin_cat2"), BlockKind::Planned);
  EXPECT_EQ(KindOfBlock("db_sales_values_costs_actual"), BlockKind::Actual);
  EXPECT_EQ(KindOfBlock("db_income_range_cat3_actual"), BlockKind::Actual);
  EXPECT_EQ(KindOfBlock("db_pastperformance_capital"), BlockKind::PastPerformance);
  EXPECT_EQ(KindOfBlock("db_sales_values_sales_annual_growth"), BlockKind::Other);
  EXPECT_EQ(KindOfBlock("db_general_assumptions"), BlockKind::Other);
  EXPECT_EQ(KindOfBlock("_actual"), BlockKind::Other);
}

TEST(CellAmount, IsANumberOrAComputedFormula) {
  const PlanBlock block{
      "db_income_range_cat3", "5", {{"Rent", "0.1", "990", "=1000* (1 + B5)", "*null*", "", "=B4", "soon"}}};
  EXPECT_EQ(CellAmount(block, 0, 2), 990);
  EXPECT_EQ(CellAmount(block, 0, 3), 1000 * (1 + 0.1));
  for (const std::size_t column : {4U, 5U, 6U, 7U, 8U}) EXPECT_FALSE(CellAmount(block, 0, column)) << column;
  EXPECT_FALSE(CellAmount(block, 1, 2));
}

TEST(CellAmount, DoesNotGrowActualAmounts) {
  const PlanBlock block{"db_income_range_cat3_actual", "5", {{"Rent", "990", "=1000* (1 + B5)"}}};
  EXPECT_EQ(CellAmount(block, 0, 1), 990);
  EXPECT_FALSE(CellAmount(block, 0, 2));
}

TEST(RowAmounts, AreTheTwelveMonths) {
  const PlanBlock planned{"db_income_range_cat3", "5", {WithMonths({"Rent", "0.5"}, "=100* (1 + B5)")}};
  EXPECT_EQ(RowAmounts(planned, 0).Sum(), 12 * 150);
  const PlanBlock actual{
      "db_income_range_cat3_actual", "5", {WithMonths({"Rent"}, "100"), {"Fuel", "7", "8"}}};
  EXPECT_EQ(RowAmounts(actual, 0).Sum(), 1200);
  EXPECT_EQ(RowAmounts(actual, 1).months[1], 8);
  EXPECT_EQ(RowAmounts(actual, 1).Sum(), 15);
}

TEST(HasUnreadMonth, MeansFormulasAndTextsInTheMonths) {
  const PlanBlock block{"db_income_range_cat3",
                        "5",
                        {WithMonths({"Rent", "=B1"}, "*null*"),
                         WithMonths({"Fuel", "0"}, "12"),
                         WithMonths({"Fees", "0"}, "=C5*2"),
                         {"Gas", "0", "1", "some"},
                         {"Water"}}};
  EXPECT_FALSE(HasUnreadMonth(block, 0));
  EXPECT_FALSE(HasUnreadMonth(block, 1));
  EXPECT_TRUE(HasUnreadMonth(block, 2));
  EXPECT_TRUE(HasUnreadMonth(block, 3));
  EXPECT_FALSE(HasUnreadMonth(block, 4));
}

}  // namespace
}  // namespace krnqb::plan_file
