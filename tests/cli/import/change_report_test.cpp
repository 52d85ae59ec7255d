#include "cli/import/change_report.h"

#include <gtest/gtest.h>

namespace krnqb::cli {
namespace {

using plan_file::RowChange;
using plan_file::TableChange;

TableChange ExpenseChange() {
  TableChange change;
  change.id = "20000000000000000000000000000600";
  change.rowsAdded = 2;
  change.cellsChanged = 3;
  change.added = {RowChange{"db_income_range_cat3", 4, "Rent"},
                  RowChange{"db_income_range_cat3", 5, "*null*"}};
  return change;
}

TableChange Unchanged() {
  TableChange change;
  change.id = "21000000000000000000000000000600";
  return change;
}

TEST(ChangeReport, SaysWhenNothingChanges) {
  EXPECT_FALSE(AnyChange({Unchanged()}));
  EXPECT_EQ(ChangeReport({Unchanged()}), "Nothing in the plan changes.\n");
  EXPECT_EQ(ChangeReport({}), "Nothing in the plan changes.\n");
}

TEST(ChangeReport, CountsWhatChangesAndNamesNewRows) {
  EXPECT_TRUE(AnyChange({Unchanged(), ExpenseChange()}));
  EXPECT_EQ(ChangeReport({ExpenseChange(), Unchanged()}),
            "Plan table        Rows added  Cells changed  Formulas cleared\n"
            "Planned expenses           2              3                 0\n"
            "New rows, by name:\n"
            "  Planned expenses: Rent\n");
}

TEST(ChangeReport, SaysThatThePlanningProgramComputesClearedFormulas) {
  TableChange change = Unchanged();
  change.formulasCleared = 12;
  EXPECT_EQ(ChangeReport({change}),
            "Plan table       Rows added  Cells changed  Formulas cleared\n"
            "Actual expenses           0              0                12\n"
            "The planning program computes the cleared formulas again.\n");
}

TEST(ChangeReport, CountsRemovedRows) {
  TableChange change = Unchanged();
  change.rowsRemoved = 1;
  EXPECT_EQ(ChangeReport({change}),
            "Plan table       Rows added  Cells changed  Formulas cleared  Rows removed\n"
            "Actual expenses           0              0                 0             1\n");
}

TEST(ChangeReport, BreaksLongListsOfNamesIntoLines) {
  TableChange change = ExpenseChange();
  change.added.clear();
  for (int index = 0; index < 12; ++index)
    change.added.push_back({"b", 0, "Account " + std::to_string(index)});
  const std::string report = ChangeReport({change});
  EXPECT_NE(report.find("  Planned expenses: Account 0, Account 1, Account 2, Account 3, Account 4,\n"
                        "    Account 5, Account 6, Account 7, Account 8, Account 9, Account 10,\n"
                        "    Account 11\n"),
            std::string::npos)
      << report;
}

}  // namespace
}  // namespace krnqb::cli
