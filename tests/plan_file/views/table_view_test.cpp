#include "plan_file/views/table_view.h"

#include <gtest/gtest.h>

#include <sstream>

#include "limited_child.h"
#include "plan_file/fixture.h"
#include "plan_file/headings.h"

namespace krnqb::plan_file {
namespace {

TEST(PlanTableView, AlignsNamesLeftAndOtherCellsRightByCharacters) {
  const PlanTableContent table{
      "20000000000000000000000000000600",
      {{"db_income_range_cat3",
        "5",
        {{"Café", "0.1", "1200"}, {"Total", "*null*", "=SUM(C5:C5)"}, {"*null*", "-3"}}}}};
  EXPECT_EQ(TableView(table, std::nullopt),
            "Planned expenses (20000000000000000000000000000600)\n"
            "===================================================\n"
            "\n"
            "Expenses\n"
            "  Café   0.1         1200\n"
            "  Total    ·  =SUM(C5:C5)\n"
            "  ·       -3\n");
}

TEST(PlanTableView, HasHeadingsOfRateAndMonths) {
  PlanRow row(14, "0");
  row[0] = "Rent";
  const std::string view = TableView(
      PlanTableContent{"20000000000000000000000000000600", {{"x", "5", {row}}}}, YearMonth{2003, 11});
  EXPECT_NE(view.find("x\n"
                      "        Rate  Nov  Dec  Jan  Feb  Mar  Apr  May  Jun  Jul  Aug  Sep  Oct\n"
                      "  Rent     0    0    0    0    0    0    0    0    0    0    0    0    0\n"),
            std::string::npos)
      << view;
}

TEST(PlanTableView, ReplacesControlCharactersWithBlanks) {
  const std::string view = TableView(PlanTableContent{"1",
                                                      {{"b",
                                                        "",
                                                        {{"a\nb\u009B"
                                                          "c",
                                                          "1"}}}}},
                                     std::nullopt);
  EXPECT_NE(view.find("  a b c  1\n"), std::string::npos) << view;
}

PlanTableContent GrownExpenses() {
  PlanRow rent{"Rent", "0.1"};
  PlanRow total{"Total", "*null*"};
  for (int month = 1; month <= 12; ++month) {
    rent.push_back("=" + std::to_string(month * 100) + "* (1 + B5)");
    total.push_back("=SUM(X)");
  }
  rent[13] = "=1200* (1 + B9)";
  return {"20000000000000000000000000000600", {{"db_income_range_cat3", "5", {rent, total}}}};
}

TEST(PlanTableView, ComputesGrowthFormulasOfTheirOwnRow) {
  const std::string view =
      TableView(GrownExpenses(), YearMonth{2003, 1}, {.width = 200, .cells = CellView::Values});
  EXPECT_NE(
      view.find("\n  Rent    0.1   110.00   220.00   330.00   440.00   550.00   660.00   770.00   880.00   "
                "990.00  1,100.00  1,210.00  =1200* (1 + B9)\n"),
      std::string::npos)
      << view;
  EXPECT_NE(view.find("  =SUM(X)  "), std::string::npos) << view;
}

TEST(PlanTableView, SplitsTheYearWhereALineIsTooShort) {
  const std::string view =
      TableView(GrownExpenses(), YearMonth{2003, 1}, {.width = 60, .cells = CellView::Values});
  EXPECT_NE(view.find("         Rate      Jan      Feb      Mar      Apr\n"), std::string::npos) << view;
  EXPECT_NE(view.find("\n\n             May"), std::string::npos) << view;
  std::istringstream lines(TableView(GrownExpenses(), YearMonth{2003, 1}, {.width = 40}));
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 42U) << line;
}

TEST(PlanTableView, LeavesRatesAndAssumptionsAsTheyAre) {
  const PlanTableContent table{"1",
                               {{"db_general_assumptions", "4", {{"Tax rate", "0.285", "30"}}},
                                {"db_sales_values_annual_growth", "8", {{"Plants", "0.075"}}},
                                {"db_pastperformance_sales", "12", {{"Sales", "1500", "=B1/B2", "*null*"}}}}};
  const std::string view = TableView(table, YearMonth{2003, 1}, {.cells = CellView::Values});
  EXPECT_NE(view.find("  Tax rate  0.285  30\n"), std::string::npos) << view;
  EXPECT_NE(view.find("  Plants  0.075\n"), std::string::npos) << view;
  EXPECT_NE(view.find("  Sales  1,500.00  =B1/B2     ·\n"), std::string::npos) << view;
}

TEST(PlanTableView, ReportsMissingRowsAndBlocks) {
  EXPECT_EQ(TableView(PlanTableContent{"1", {}}, std::nullopt), "Table 1 (1)\n===========\n(no blocks)\n");
  EXPECT_NE(TableView(PlanTableContent{"1", {{"b", "", {}}}}, std::nullopt).find("b\n  (no rows)\n"),
            std::string::npos);
}

TEST(PlanTableView, ShowsAllTablesOrOneOrThrowsError9) {
  const TemporaryFolder folder;
  WriteText(folder / "garden.kpf", SmallPlanText());
  const auto plan = PlanFile::Open(folder / "garden.kpf");
  const std::string planned = TableView(*plan, expenseTable);
  const std::string actual = TableView(*plan, actualExpenseTable);
  EXPECT_EQ(planned.find("Planned expenses"), 0U);
  EXPECT_EQ(actual.find("Actual expenses"), 0U);
  EXPECT_EQ(TableView(*plan), planned + "\n" + actual);
  const auto error = ErrorOf([&] { TableView(*plan, "7"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Number(), error_number::subscriptOutOfRange);
}

TEST(PlanHeadings, HaveATitlePerTable) {
  EXPECT_EQ(TableTitle("20000000000000000000000000000400"), "Planned sales and costs");
  EXPECT_EQ(TableTitle("21000000000000000000000000000400"), "Actual sales and costs");
  EXPECT_EQ(TableTitle("21000000000000000000000000002000"), "Actual contribution margin expenses");
  EXPECT_EQ(TableTitle("20000000000000000000000000002090"), "Planned contribution margin");
  EXPECT_EQ(TableTitle("20000000000000000000000000000800"), "Past performance");
  EXPECT_EQ(TableTitle("20000000000000000000000000000999"), "Table 20000000000000000000000000000999");
  EXPECT_EQ(TableTitle("0600"), "Table 0600");
}

TEST(PlanHeadings, OfPastPerformanceAreTheYearsBeforeThePlan) {
  using Headings = std::vector<std::string>;
  EXPECT_EQ(ColumnHeadings("db_pastperformance_sales", 4, YearMonth{2003, 1}),
            (Headings{"2000", "2001", "2002"}));
  EXPECT_EQ(ColumnHeadings("db_pastperformance_sales", 4, YearMonth{2002, 7}),
            (Headings{"1999/00", "2000/01", "2001/02"}));
  EXPECT_EQ(ColumnHeadings("db_pastperformance_sales", 4, std::nullopt),
            (Headings{"Year 1", "Year 2", "Year 3"}));
  const Headings withMonths = ColumnHeadings("db_pastperformance_sales", 15, YearMonth{2003, 1});
  ASSERT_EQ(withMonths.size(), 14U);
  EXPECT_EQ(withMonths[1], "2001");
  EXPECT_EQ(withMonths[2], "Jan");
  EXPECT_EQ(withMonths[13], "Dec");
}

TEST(PlanHeadings, AreEmptyForRowsOfAnotherWidth) {
  EXPECT_TRUE(ColumnHeadings("db_income_range_cat3", 3, YearMonth{2003, 1}).empty());
  EXPECT_TRUE(ColumnHeadings("db_pastperformance_sales", 14, YearMonth{2003, 1}).empty());
}

TEST(PlanTableView, ShortensACellThatIsWiderThanALine) {
  PlanTableContent table{"1", {{"b", "", {{"Rent", std::string(300'000, '9'), "1"}}}}};
  for (int row = 0; row < 3'000; ++row) table.blocks[0].rows.push_back({"Fuel", "20", "300"});
  table.blocks[0].rows.push_back({std::string(300'000, 'x')});
  EXPECT_TRUE(tests::StaysWithinLimits(600'000, [&] {
    const std::string view = TableView(table, std::nullopt);
    return view.find("\n  Rent  " + std::string(71, '9') + "…\n") != std::string::npos &&
           view.find("\n  " + std::string(77, 'x') + "…\n") != std::string::npos &&
           view.find("\n  Fuel  300\n") != std::string::npos;
  }));
}

}  // namespace
}  // namespace krnqb::plan_file
