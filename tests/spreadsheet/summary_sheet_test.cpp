#include "spreadsheet/summary_sheet.h"

#include <gtest/gtest.h>

#include "plans.h"

namespace krnqb::spreadsheet {
namespace {

using tests::Actual;
using tests::CellAt;
using tests::ContentAt;
using tests::Planned;
using tests::SheetsOfBlocks;
using tests::ValueAt;

PlanSheets Year(const std::string& expense) {
  return SheetsOfBlocks(
      {{"db_sales_values_sales",
        "6",
        {Planned("A", "0.1", "=100 * (1 + B6)"), Planned("Total", "*null*", "=SUM(C6:C6)")}},
       {"db_sales_values_costs", "9", {Planned("B", "0", "30"), Planned("Total", "*null*", "*null*")}},
       {"db_income_range_cat3",
        "5",
        {Planned("C", "0", expense), Planned("Depreciation", "0", "5"), Planned("Total", "", "")}}},
      {{"db_sales_values_sales_actual", "6", {Actual("A", "90"), Actual("Total", "*null*")}}});
}

TEST(SummaryOfAPlan, AddsUpTheRowsOfTheBlocksWithoutTotals) {
  const Sheet summary = SummaryOf(Year("20"));
  EXPECT_EQ(ContentAt(summary, 5, 0), "Sales");
  EXPECT_EQ(ContentAt(summary, 5, 1), "=SUM('Planned sales'!C6:C6)");
  EXPECT_DOUBLE_EQ(ValueAt(summary, 5, 1), 110);
  EXPECT_EQ(ContentAt(summary, 7, 1), "=SUM('Planned expenses'!C5:C6)");
  EXPECT_EQ(ContentAt(summary, 8, 12), "=M6-M7-M8");
  EXPECT_DOUBLE_EQ(ValueAt(summary, 8, 12), 55);
  EXPECT_EQ(ContentAt(summary, 8, 13), "=SUM(B9:M9)");
  EXPECT_DOUBLE_EQ(ValueAt(summary, 8, 13), 660);
  EXPECT_EQ(ContentAt(summary, 11, 1), "=SUM('Actual sales'!B6:B6)");
  EXPECT_EQ(CellAt(summary, 12, 1), nullptr) << "the plan has no actual costs";
  EXPECT_DOUBLE_EQ(ValueAt(summary, 14, 1), 90);
}

TEST(SummaryOfAPlan, HasAFigureWhereAFormulaWouldAmountToSomethingElse) {
  const PlanSheets sheets = Year("=C6*2");
  const Sheet summary = SummaryOf(sheets);
  EXPECT_EQ(ContentAt(summary, 7, 1), "5") << "the plan's figures lack a row that is no growth formula";
  const std::vector<SheetWarning> warnings = SummaryWarnings(sheets);
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(warnings[0].what,
            "lacks amounts of the row \"C\" of Planned expenses, which are neither numbers nor formulas of "
            "an import");
}

TEST(SummaryOfAPlan, HasTwoChartsOfItsMonths) {
  const Sheet summary = SummaryOf(Year("20"));
  ASSERT_EQ(summary.charts.size(), 2U);
  EXPECT_EQ(summary.charts[0].title, "Planned sales, costs and expenses");
  EXPECT_EQ(summary.charts[0].series.size(), 3U);
  EXPECT_EQ(summary.charts[1].series.size(), 2U);
  EXPECT_EQ(summary.charts[1].series[1].values.row, 14U);
}

TEST(SummaryOfAPlan, ShowsActualSalesIfNothingIsPlanned) {
  const Sheet summary =
      SummaryOf(SheetsOfBlocks({{"db_sales_values_sales", "6", {Planned("A", "0", "0")}}},
                               {{"db_sales_values_sales_actual", "6", {Actual("A", "90")}}}));
  EXPECT_EQ(summary.charts.at(0).title, "Actual sales, costs and expenses");
}

TEST(SummaryOfAPlan, IsEmptyForAPlanWithoutTheseBlocks) {
  const PlanSheets empty = SheetsOf("empty.kpf", {}, std::nullopt, std::nullopt);
  const Sheet summary = SummaryOf(empty);
  EXPECT_TRUE(summary.charts.empty());
  EXPECT_EQ(ContentAt(summary, 3, 1), "Month 1");
  EXPECT_EQ(CellAt(summary, 8, 1), nullptr);
}

TEST(ProductOfAPlan, IsThatOfItsExpensesIfThePlanDoesNotSay) {
  const plan_file::PlanContent margin{{"2", {{"db_contributionmargin_cat2", "5", {}}}}};
  EXPECT_EQ(ProductOf(SheetsOf("x", margin, std::nullopt, std::nullopt)), QBKRN_BRI);
  EXPECT_EQ(ProductOf(SheetsOf("x", margin, QBKRN_COR, std::nullopt)), QBKRN_COR);
  EXPECT_EQ(ProductOf(SheetsOf("x", {}, std::nullopt, std::nullopt)), QBKRN_ALD);
}

}  // namespace
}  // namespace krnqb::spreadsheet
