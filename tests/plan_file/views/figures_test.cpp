#include "plan_file/views/figures.h"

#include <gtest/gtest.h>

namespace krnqb::plan_file {
namespace {

PlanRow Planned(const std::string& name, const std::string& month) {
  PlanRow row{name, "0"};
  row.insert(row.end(), monthsOfAYear, month);
  return row;
}

PlanContent Plan(std::vector<PlanRow> expenses) {
  return {{"20000000000000000000000000000400",
           {{"db_sales_values_sales", "5", {Planned("Plants", "100"), Planned("Total sales", "=SUM(C5:C5)")}},
            {"db_sales_values_costs", "9", {Planned("Seeds", "30"), Planned("Total", "*null*")}}}},
          {"20000000000000000000000000000600", {{"db_income_range_cat3", "5", std::move(expenses)}}}};
}

double YearOf(const PlanFigures& figures, FigureGroup group) {
  return figures.groups.at(static_cast<std::size_t>(group)).value().amounts.Sum();
}

TEST(FiguresOfAPlan, AddUpItsGroupsWithoutTotals) {
  const PlanFigures figures = FiguresOf(
      Plan({Planned("Rent", "=40* (1 + B5)"), Planned("Depreciation", "5"), Planned("Total", "=SUM(C5:C6)")}),
      QBKRN_ALD, BlockKind::Planned);
  EXPECT_EQ(YearOf(figures, FigureGroup::Sales), 1200);
  EXPECT_EQ(YearOf(figures, FigureGroup::Costs), 360);
  EXPECT_EQ(YearOf(figures, FigureGroup::Expenses), 540);
  EXPECT_EQ(figures.Result().Sum(), 300);
  EXPECT_EQ(figures.Result().months[11], 25);
}

TEST(FiguresOfAPlan, LackGroupsThatThePlanDoesNotHave) {
  const PlanFigures bri = FiguresOf(Plan({}), QBKRN_BRI, BlockKind::Planned);
  EXPECT_TRUE(bri.groups[0]);
  EXPECT_FALSE(bri.groups[2]);
  EXPECT_EQ(bri.Result().Sum(), 840);
  EXPECT_FALSE(FiguresOf(Plan({}), QBKRN_ALD, BlockKind::Actual).groups[0]);
}

TEST(FiguresOfAPlan, NameTheRowsThatTheyCannotInclude) {
  const PlanFigures figures =
      FiguresOf(Plan({Planned("Rent", "=C20*2"), Planned("Fuel", "=40* (1 + B5)"), Planned("Fees", "10"),
                      Planned("Depreciation", "5"), Planned("Total", "=SUM(C5:C7)")}),
                QBKRN_ALD, BlockKind::Planned);
  EXPECT_EQ(figures.groups[2]->unreadRows, (std::vector<std::string>{"Rent", "Fuel"}));
  EXPECT_EQ(YearOf(figures, FigureGroup::Expenses), 180);
}

TEST(TotalRow, IsAClosingRowOfFormulasOrOfThatName) {
  const PlanBlock block{"db_income_range_cat3",
                        "5",
                        {Planned("Total fees", "7"), Planned("Depreciation", "5"), Planned("TOTAL", "12")}};
  EXPECT_FALSE(IsTotalRow(block, 0));
  EXPECT_FALSE(IsTotalRow(block, 1));
  EXPECT_TRUE(IsTotalRow(block, 2));
  EXPECT_FALSE(IsTotalRow(block, 3));
  const PlanBlock owned{
      "db_income_range_cat3", "5", {Planned("Depreciation", "=C1/12"), Planned("Sum", "=C5")}};
  EXPECT_FALSE(IsTotalRow(owned, 0)) << "its formula is the owner's";
  EXPECT_TRUE(IsTotalRow(owned, 1));
  const PlanBlock margin{
      "db_contributionmargin_cat2",
      "8",
      {Planned("Rent", "7"), Planned("Expenses", "=SUM(C8:C8)"), Planned("Margin", "=C7-C9")}};
  EXPECT_FALSE(IsTotalRow(margin, 0));
  EXPECT_TRUE(IsTotalRow(margin, 1));
  EXPECT_TRUE(IsTotalRow(margin, 2));
  const PlanBlock sales{
      "db_sales_values_sales", "5", {Planned("Plants", "=C9"), Planned("Sales", "=10 * (1 + B6)")}};
  EXPECT_FALSE(IsTotalRow(sales, 0)) << "not a closing row";
  EXPECT_FALSE(IsTotalRow(sales, 1)) << "an account of that name has amounts";
}

TEST(GroupBlockId, DependsOnTheProduct) {
  EXPECT_EQ(GroupBlockId(FigureGroup::Expenses, QBKRN_BRI, BlockKind::Actual),
            "db_contributionmargin_cat2_actual");
  EXPECT_EQ(GroupBlockId(FigureGroup::Expenses, QBKRN_COR, BlockKind::Planned), "db_income_range_cat3");
  EXPECT_EQ(GroupBlockId(FigureGroup::Costs, QBKRN_COR, BlockKind::Actual), "db_sales_values_costs_actual");
}

}  // namespace
}  // namespace krnqb::plan_file
