#include "cli/console/changes_json.h"

#include <gtest/gtest.h>

#include "plan_file/content.h"

namespace krnqb::cli {
namespace {

using plan_file::PlanContent;
using plan_file::PlanRow;

constexpr YearMonth july{2003, 7};

PlanRow Row(const std::string& name, const std::string& first, std::size_t cells) {
  PlanRow row(cells, "0");
  row[0] = name;
  row[1] = first;
  return row;
}

PlanContent Expenses(std::vector<PlanRow> rows) {
  return {{"20000000000000000000000000000600", {{"db_income_range_cat3", "5", std::move(rows)}}}};
}

Json Changes(const PlanContent& before, const PlanContent& after, std::optional<YearMonth> start = july) {
  return ChangesJson(plan_file::CompareTables(before, after), start);
}

TEST(ChangesJson, LeavesOutUnchangedTables) {
  const PlanContent plan = Expenses({Row("Rent", "0", 14)});
  EXPECT_EQ(Changes(plan, plan), Json::array());
}

TEST(ChangesJson, NamesTheTableTheRowAndTheColumn) {
  const PlanContent before =
      Expenses({Row("Rent", "0", 14), Row("Old", "0", 14), Row("Total", "=SUM(B5:B5)", 14)});
  PlanContent after = Expenses({Row("Rent", "0.05", 14), Row("Fuel", "0", 14), Row("Total", "*null*", 14)});
  after[0].blocks[0].rows[0][2] = "=967.5 * (1 + B5)";
  const Json changes = Changes(before, after);
  ASSERT_EQ(changes.size(), 1U);
  const Json& table = changes[0];
  EXPECT_EQ(table.at("id"), "20000000000000000000000000000600");
  EXPECT_EQ(table.at("title"), "Planned expenses");
  EXPECT_EQ(table.at("changed"), (Json{{{"block", "db_income_range_cat3"},
                                        {"row", 0},
                                        {"name", "Rent"},
                                        {"column", 1},
                                        {"heading", "Rate"},
                                        {"before", "0"},
                                        {"after", "0.05"}},
                                       {{"block", "db_income_range_cat3"},
                                        {"row", 0},
                                        {"name", "Rent"},
                                        {"column", 2},
                                        {"heading", "Jul"},
                                        {"before", "0"},
                                        {"after", "=967.5 * (1 + B5)"}}}));
  ASSERT_EQ(table.at("cleared").size(), 1U);
  EXPECT_EQ(table.at("cleared")[0].at("name"), "Total");
  EXPECT_EQ(table.at("cleared")[0].at("before"), "=SUM(B5:B5)");
  EXPECT_EQ(table.at("cleared")[0].at("after"), "*null*");
  ASSERT_EQ(table.at("removed").size(), 1U);
  EXPECT_EQ(table.at("removed")[0].at("name"), "Old");
  ASSERT_EQ(table.at("added").size(), 1U);
  EXPECT_EQ(table.at("added")[0].at("row"), 1);
  EXPECT_EQ(table.at("added")[0].at("name"), "Fuel");
}

TEST(ChangesJson, GiveAnAddedRowAHeadingForEachCell) {
  const Json changes = Changes(Expenses({}), Expenses({Row("Fuel", "12.5", 13)}));
  const Json& row = changes.at(0).at("added").at(0);
  EXPECT_EQ(row.at("headings"), (Json{"Name", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec", "Jan", "Feb", "Mar",
                                      "Apr", "May", "Jun"}));
  EXPECT_EQ(row.at("cells"), (Json{"Fuel", "12.5", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0"}));
}

TEST(ChangesJson, NumberMonthsWithoutAStartAndHaveNoHeadingsForAnotherLayout) {
  EXPECT_EQ(Changes(Expenses({}), Expenses({Row("Fuel", "1", 13)}), std::nullopt)[0].at("added")[0].at(
                "headings")[1],
            "Month 1");
  EXPECT_EQ(Changes(Expenses({}), Expenses({Row("Fuel", "1", 5)}))[0].at("added")[0].at("headings"),
            Json::array());
  const Json cell =
      Changes(Expenses({Row("Fuel", "1", 5)}), Expenses({Row("Fuel", "2", 5)}))[0].at("changed")[0];
  EXPECT_TRUE(cell.at("heading").is_null());
}

TEST(ChangesJson, NameTheColumnOfTheNames) {
  const Json table = Changes(Expenses({Row("=A4", "0", 14)}), Expenses({Row("*null*", "0", 14)}))[0];
  ASSERT_EQ(table.at("cleared").size(), 1U);
  EXPECT_EQ(table.at("cleared")[0].at("column"), 0);
  EXPECT_EQ(table.at("cleared")[0].at("heading"), "Name");
}

TEST(ChangesJson, HaveAnEmptyTextForAMissingCell) {
  const Json cell = Changes(Expenses({{"Fuel", "1"}}), Expenses({{"Fuel", "1", "7"}}))[0].at("changed")[0];
  EXPECT_EQ(cell.at("column"), 2);
  EXPECT_EQ(cell.at("before"), "");
  EXPECT_EQ(cell.at("after"), "7");
}

}  // namespace
}  // namespace krnqb::cli
