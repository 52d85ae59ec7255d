#include "plan_file/views/differences.h"

#include <gtest/gtest.h>

namespace krnqb::plan_file {
namespace {

constexpr const char* planned = "20000000000000000000000000000600";
constexpr const char* actual = "21000000000000000000000000000600";

PlanRow Row(const std::string& name, const std::string& first, std::size_t cells) {
  PlanRow row(cells, "*null*");
  row[0] = name;
  row[1] = first;
  return row;
}

// The expenses, planned and actual; the actual rows have no names.
PlanContent Expenses(std::vector<PlanRow> plannedRows, std::vector<PlanRow> actualRows) {
  return {{planned, {{"db_income_range_cat3", "5", std::move(plannedRows)}}},
          {actual, {{"db_income_range_cat3_actual", "5", std::move(actualRows)}}}};
}

TEST(NamedDifferences, NameTableBlockRowAndColumn) {
  const auto before = Expenses({Row("Rent", "0", 14)}, {Row("*null*", "*null*", 13)});
  const auto after = Expenses({Row("Rent", "0.1", 14)}, {Row("*null*", "1200", 13)});
  EXPECT_EQ(NamedDifferences(before, after, YearMonth{2003, 7}),
            (std::vector<TableDifference>{
                {planned,
                 "Planned expenses",
                 {{RowDifference::Kind::Changed, "Expenses", "Rent", {{1, "Rate", "0", "0.1"}}}}},
                {actual,
                 "Actual expenses",
                 {{RowDifference::Kind::Changed, "Expenses", "Rent", {{1, "Jul", "*null*", "1200"}}}}}}));
}

TEST(NamedDifferences, ListTheCellsOfAddedAndRemovedRows) {
  const auto before = Expenses({Row("Rent", "0", 14), Row("Total", "=1", 14)}, {});
  const auto after = Expenses({Row("Fuel", "5", 14), Row("Total", "*null*", 14)}, {});
  EXPECT_EQ(NamedDifferences(before, after, std::nullopt),
            (std::vector<TableDifference>{
                {planned,
                 "Planned expenses",
                 {{RowDifference::Kind::Removed, "Expenses", "Rent", {{1, "Rate", "0", std::nullopt}}},
                  {RowDifference::Kind::Added, "Expenses", "Fuel", {{1, "Rate", std::nullopt, "5"}}},
                  {RowDifference::Kind::Changed, "Expenses", "Total", {{1, "Rate", "=1", "*null*"}}}}}}));
}

TEST(NamedDifferences, NumberWhatHasNoName) {
  const PlanContent before{{"x", {{"b", "1", {{"*null*", "1"}, {"", "2"}}}}}};
  const PlanContent after{{"x", {{"b", "1", {{"*null*", "1"}, {"", "3", "4"}}}}}};
  EXPECT_EQ(NamedDifferences(before, after, std::nullopt),
            (std::vector<TableDifference>{{"x",
                                           "Table x",
                                           {{RowDifference::Kind::Changed,
                                             "b",
                                             "row 2",
                                             {{1, "column 2", "2", "3"}, {2, "column 3", "", "4"}}}}}}));
}

TEST(NamedDifferences, AreEmptyBetweenEqualStates) {
  const auto content = Expenses({Row("Rent", "0", 14)}, {Row("*null*", "1", 13)});
  EXPECT_TRUE(NamedDifferences(content, content, std::nullopt).empty());
}

}  // namespace
}  // namespace krnqb::plan_file
