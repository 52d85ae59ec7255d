#include "cli/import/summary/report.h"

#include <gtest/gtest.h>

namespace krnqb::cli {
namespace {

using plan_file::TableChange;

TableChange ExpenseChange() {
  TableChange change;
  change.id = "20000000000000000000000000000600";
  change.rowsAdded = 2;
  change.cellsChanged = 3;
  return change;
}

ImportSummary Summary(QBKRN_BalancesImport balances) {
  ImportSummary summary;
  summary.scope = {.balances = balances, .planStart = {2003, 1}, .importStart = {2002, 1}};
  return summary;
}

TEST(ChangeReport, SaysWhenNothingChanges) {
  EXPECT_FALSE(AnyChange({TableChange()}));
  EXPECT_EQ(ChangeReport(Summary(BalImport_None), {TableChange()}, 80), "Nothing in the plan changes.\n");
  EXPECT_EQ(ChangeReport(Summary(BalImport_None), {}, 80), "Nothing in the plan changes.\n");
}

TEST(ChangeReport, NamesNewRowsWithoutSumsIfNoAmountsWereImported) {
  ImportSummary summary = Summary(BalImport_None);
  summary.added[0] = {{"Plants", {}, {}}};
  summary.added[2] = {{"Café", {}, {}}, {"Two\nlines", {}, {}}};
  EXPECT_TRUE(AnyChange({TableChange(), ExpenseChange()}));
  EXPECT_EQ(ChangeReport(summary, {ExpenseChange(), TableChange()}, 80),
            "Rows added (no amounts were imported):\n"
            "  Sales: Plants\n"
            "  Expenses: Café, Two lines\n"
            "\n"
            "1 table changes: 2 rows added, 3 other cells changed.\n");
}

TEST(ChangeReport, ListsNewRowsWithTheSumsThatWereImported) {
  ImportSummary summary = Summary(BalImport_All);
  summary.added[0] = {{"Plants", 1320, 1200}};
  summary.added[2] = {{"Café", 0, 0}, {"Insurance", 28414.8, {}}};
  const std::string report = ChangeReport(summary, {ExpenseChange()}, 80);
  EXPECT_EQ(report.find("Rows added, with the sum of the year:\n"
                        "               Planned    Actual\n"
                        "Sales\n"
                        "  Plants      1,320.00  1,200.00\n"
                        "Expenses\n"
                        "  Café            0.00      0.00\n"
                        "  Insurance  28,414.80         -\n"
                        "\n"),
            0U)
      << report;
  summary.scope.balances = BalImport_Planned;
  EXPECT_EQ(ChangeReport(summary, {ExpenseChange()}, 80).find("Actual"), std::string::npos);
  summary.scope.balances = BalImport_Actual;
  EXPECT_EQ(ChangeReport(summary, {ExpenseChange()}, 80).find("Planned"), std::string::npos);
}

TEST(ChangeReport, SaysThatThePlanningProgramComputesClearedFormulas) {
  TableChange change;
  change.cellsChanged = 2;
  change.formulasCleared = 12;
  EXPECT_EQ(ChangeReport(Summary(BalImport_None), {change}, 80),
            "1 table changes: 2 cells changed, 12 formulas cleared.\n"
            "The planning program computes the cleared formulas again.\n");
}

TEST(ChangeReport, CountsRemovedRows) {
  TableChange change;
  change.rowsRemoved = 1;
  change.cellsChanged = 1;
  EXPECT_EQ(ChangeReport(Summary(BalImport_None), {change}, 80),
            "1 table changes: 1 row removed, 1 other cell changed.\n");
}

TEST(ChangeReport, ShowsThePastFiguresByYear) {
  ImportSummary summary = Summary(BalImport_All);
  summary.pastPerformanceImported = true;
  EXPECT_EQ(ChangeReport(summary, {}, 80).find("Past performance: no figure changes.\n"), 0U);
  summary.pastRows = {{"Sales", {"2000", "2001", "2002"}, {0, 120.5, 28414.8}},
                      {"Cash", {"2000", "2001", "2002"}, {-1, {}, 3}}};
  const std::string report = ChangeReport(summary, {ExpenseChange()}, 80);
  EXPECT_EQ(report.find("Past performance, rows that change:\n"
                        "          2000    2001       2002\n"
                        "  Sales   0.00  120.50  28,414.80\n"
                        "  Cash   -1.00       -       3.00\n"),
            0U)
      << report;
}

TEST(ChangeReport, LeavesOutPastPeriodsWithoutFigures) {
  ImportSummary summary = Summary(BalImport_All);
  summary.pastPerformanceImported = true;
  summary.pastRows = {{"Sales", {"2000", "2001", "Jan", "Feb"}, {5, 0, 0, 7}}, {"Cash", {}, {0, 0, 0}}};
  const std::string report = ChangeReport(summary, {ExpenseChange()}, 80);
  EXPECT_EQ(report.find("Past performance, rows that change:\n"
                        "         2000   Feb\n"
                        "  Sales  5.00  7.00\n"
                        "  Cash   0.00     -\n"
                        "  0.00 in every row: 2001, Jan\n"),
            0U)
      << report;
}

TEST(ChangeReport, SaysHowClearedGrowthFormulasAreWrittenAgain) {
  const std::string_view note =
      "Growth formulas cleared because rows were added: 12;\n    import planned amounts to write them "
      "again\n";
  for (const auto& [balances, shown] :
       {std::pair{BalImport_None, true}, std::pair{BalImport_Actual, true},
        std::pair{BalImport_Planned, false}, std::pair{BalImport_All, false}}) {
    ImportSummary summary = Summary(balances);
    summary.growthCleared = 12;
    EXPECT_EQ(ChangeReport(summary, {}, 80).find(note) != std::string::npos, shown) << balances;
  }
}

TEST(ChangeReport, TitlesTheFiguresWithTheirYear) {
  ImportSummary summary = Summary(BalImport_All);
  summary.planned.emplace();
  summary.actual.emplace();
  const std::string report = ChangeReport(summary, {}, 80);
  const std::size_t planned = report.find("Planned amounts with growth, January to December 2003:\n");
  const std::size_t actual = report.find("\n\nActual amounts, January to December 2002:\n");
  EXPECT_EQ(planned, 0U) << report;
  ASSERT_NE(actual, std::string::npos) << report;
  EXPECT_NE(report.find("Result\n  same", actual), std::string::npos) << report;
}

}  // namespace
}  // namespace krnqb::cli
