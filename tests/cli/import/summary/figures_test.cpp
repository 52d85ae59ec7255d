#include "cli/import/summary/figures.h"

#include <gtest/gtest.h>

namespace krnqb::cli {
namespace {

using plan_file::PlanContent;
using plan_file::PlanRow;

PlanRow Row(PlanRow row, const std::string& month) {
  row.insert(row.end(), plan_file::monthsOfAYear, month);
  return row;
}

PlanContent Plan(std::vector<PlanRow> planned, std::vector<PlanRow> actual) {
  return {{"20000000000000000000000000000600", {{"db_income_range_cat3", "5", std::move(planned)}}},
          {"21000000000000000000000000000600", {{"db_income_range_cat3_actual", "5", std::move(actual)}}}};
}

PlanContent Before() {
  return Plan({Row({"Rent", "0"}, "10"), Row({"Total", "*null*"}, "=SUM(C5:C5)")},
              {Row({"Rent"}, "0"), Row({"Total"}, "=SUM(B5:B5)")});
}

PlanContent After() {
  return Plan(
      {Row({"Rent", "0"}, "10"), Row({"Fuel", "0.5"}, "=100* (1 + B6)"), Row({"Total", "*null*"}, "*null*")},
      {Row({"Rent"}, "0"), Row({"*null*"}, "100"), Row({"Total"}, "*null*")});
}

ImportSummary Summary(QBKRN_BalancesImport balances, const PlanContent& before, const PlanContent& after) {
  return SummarizeImport(before, after, plan_file::CompareTables(before, after),
                         {.balances = balances, .planStart = {2003, 1}, .importStart = {2002, 1}});
}

constexpr std::size_t expenses = 2;

TEST(ImportSummary, ShowsPlannedAndActualFiguresAsImported) {
  const ImportSummary all = Summary(BalImport_All, Before(), After());
  ASSERT_TRUE(all.planned);
  ASSERT_TRUE(all.actual);
  EXPECT_EQ(all.planned->before.groups[expenses]->amounts.Sum(), 120);
  EXPECT_EQ(all.planned->after.groups[expenses]->amounts.Sum(), 120 + 12 * 150);
  EXPECT_EQ(all.actual->before.groups[expenses]->amounts.Sum(), 0);
  EXPECT_EQ(all.actual->after.groups[expenses]->amounts.Sum(), 1200);
}

TEST(ImportSummary, ShowsOtherFiguresOnlyIfTheyDiffer) {
  const PlanContent before = Before();
  EXPECT_FALSE(Summary(BalImport_Planned, before, before).actual);
  EXPECT_TRUE(Summary(BalImport_Planned, before, before).planned);
  EXPECT_FALSE(Summary(BalImport_Actual, before, before).planned);
  EXPECT_FALSE(Summary(BalImport_None, before, before).planned);
  EXPECT_TRUE(Summary(BalImport_Actual, Before(), After()).planned);
  // adding a row clears the growth formulas of an earlier import
  EXPECT_TRUE(Summary(BalImport_None, After(), Before()).planned);
}

TEST(ImportSummary, ListsNamedNewRowsWithTheSumsOfTheirYear) {
  const ImportSummary all = Summary(BalImport_All, Before(), After());
  EXPECT_TRUE(all.added[0].empty());
  ASSERT_EQ(all.added[expenses].size(), 1U);
  EXPECT_EQ(all.added[expenses][0].name, "Fuel");
  EXPECT_EQ(all.added[expenses][0].planned, 1800);
  EXPECT_EQ(all.added[expenses][0].actual, 1200);
  const ImportSummary planned = Summary(BalImport_Planned, Before(), After());
  EXPECT_EQ(planned.added[expenses][0].planned, 1800);
  EXPECT_FALSE(planned.added[expenses][0].actual);
}

TEST(ImportSummary, DoesNotListANewRowWithoutAName) {
  PlanContent after = After();
  after[0].blocks[0].rows[1][0] = "*null*";
  ASSERT_FALSE(plan_file::CompareTables(Before(), after).empty());
  EXPECT_TRUE(Summary(BalImport_All, Before(), after).added[expenses].empty());
}

TEST(ImportSummary, CountsGrowthFormulasThatAreCleared) {
  PlanContent cleared = After();
  for (std::size_t column = 2; column < 14; ++column) cleared[0].blocks[0].rows[1][column] = "*null*";
  EXPECT_EQ(Summary(BalImport_None, After(), cleared).growthCleared, 12);
  EXPECT_EQ(Summary(BalImport_All, Before(), After()).growthCleared, 0) << "totals do not grow";
}

TEST(ImportSummary, HasThePastRowsThatChanged) {
  const auto past = [](const std::string& cash) {
    return PlanContent{
        {"20000000000000000000000000000800",
         {{"db_pastperformance_shorttermassets",
           "5",
           {{"Cash", cash, "2", "3"}, {"Inventory", "7", "8", "9"}, {"Total", "=B5", "=C5", "=D5"}}}}}};
  };
  const PlanContent before = past("*null*");
  const PlanContent after = past("1");
  SummaryScope scope{.balances = BalImport_All, .pastPerformance = true, .planStart = {2003, 1}};
  const auto changes = plan_file::CompareTables(before, after);
  const ImportSummary summary = SummarizeImport(before, after, changes, scope);
  EXPECT_TRUE(summary.pastPerformanceImported);
  ASSERT_EQ(summary.pastRows.size(), 1U);
  EXPECT_EQ(summary.pastRows[0].name, "Cash");
  EXPECT_EQ(summary.pastRows[0].headings, (std::vector<std::string>{"2000", "2001", "2002"}));
  EXPECT_EQ(summary.pastRows[0].amounts, (std::vector<std::optional<double>>{1, 2, 3}));
  scope.product = QBKRN_BRI;
  EXPECT_FALSE(SummarizeImport(before, after, changes, scope).pastPerformanceImported);
  scope.product = QBKRN_ALD;
  scope.balances = BalImport_None;
  EXPECT_FALSE(SummarizeImport(before, after, changes, scope).pastPerformanceImported);
}

}  // namespace
}  // namespace krnqb::cli
