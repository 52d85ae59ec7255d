#include "plan_file/changes.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <chrono>

#include "plan_file/fixture.h"
#include "plan_file/listing.h"

namespace krnqb::plan_file {
namespace {

PlanContent OneBlock(std::vector<PlanRow> rows) {
  return {{"2000", {{"sales", "5", std::move(rows)}}}};
}

TEST(PlanChanges, OfEqualStatesAreEmpty) {
  const PlanContent content = OneBlock({{"a", "1"}, {"total", "=S"}});
  const auto changes = CompareTables(content, content);
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_EQ(changes[0].id, "2000");
  EXPECT_FALSE(changes[0].Any());
  EXPECT_EQ(ChangeListing(changes), "");
}

TEST(PlanChanges, AreCountedAndListedPerTable) {
  const auto changes = CompareTables(OneBlock({{"a", "1", "2"}, {"b", "3", "4"}, {"total", "=S", "=T"}}),
                                     OneBlock({{"a", "1", "7"}, {"n", "8", "9"}, {"total", "*null*", "5"}}));
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_EQ(changes[0].rowsAdded, 1);
  EXPECT_EQ(changes[0].rowsRemoved, 1);
  EXPECT_EQ(changes[0].cellsChanged, 2);
  EXPECT_EQ(changes[0].formulasCleared, 1);
  EXPECT_TRUE(changes[0].Any());
  EXPECT_EQ(changes[0].added, (std::vector<RowChange>{{"sales", 1, "n", {"n", "8", "9"}}}));
  EXPECT_EQ(changes[0].removed, (std::vector<RowChange>{{"sales", 1, "b", {"b", "3", "4"}}}));
  EXPECT_EQ(changes[0].changed, (std::vector<CellChange>{{"sales", 0, "a", 2, "2", "7", 3},
                                                         {"sales", 2, "total", 2, "=T", "5", 3}}));
  EXPECT_EQ(changes[0].cleared, (std::vector<CellChange>{{"sales", 2, "total", 1, "=S", "*null*", 3}}));
}

TEST(PlanChanges, CountABlankRowAboveTheClosingRowsAsAdded) {
  const auto changes =
      CompareTables(OneBlock({{"*null*", "0"}, {"*null*", "1"}, {"*null*", "=S"}}),
                    OneBlock({{"*null*", "0"}, {"*null*", "0"}, {"*null*", "1"}, {"*null*", "*null*"}}));
  EXPECT_EQ(changes[0].rowsAdded, 1);
  EXPECT_EQ(changes[0].cellsChanged, 0);
  EXPECT_EQ(changes[0].formulasCleared, 1);
}

TEST(PlanChanges, CountAnEmptiedAmountAsAChangedCell) {
  const auto changes = CompareTables(OneBlock({{"a", "12"}}), OneBlock({{"a", "*null*"}}));
  EXPECT_EQ(changes[0].cellsChanged, 1);
  EXPECT_EQ(changes[0].formulasCleared, 0);
}

TEST(PlanChanges, CountAFormulaReplacedByAnEmptyTextAsAChangedCell) {
  const auto changes = CompareTables(OneBlock({{"a", "=S"}}), OneBlock({{"a", ""}}));
  EXPECT_EQ(changes[0].cellsChanged, 1);
  EXPECT_EQ(changes[0].formulasCleared, 0);
}

TEST(PlanChanges, CountAnAddedColumnAsChangedCells) {
  const auto changes = CompareTables(OneBlock({{"a"}}), OneBlock({{"a", ""}}));
  EXPECT_EQ(changes[0].cellsChanged, 1);
}

TEST(PlanChanges, MatchBlocksWithOneIdInOrder) {
  const PlanContent before{{"2000", {{"x", "", {{"a", "1"}}}, {"x", "", {{"b", "2"}}}}}};
  const PlanContent after{{"2000", {{"x", "", {{"a", "3"}}}, {"x", "", {{"b", "4"}}}}}};
  EXPECT_EQ(ChangeListing(CompareTables(before, after)),
            "changed\t2000\tx\t0\ta\t1\t1\t3\n"
            "changed\t2000\tx\t0\tb\t1\t2\t4\n");
}

TEST(PlanChanges, CountRowsOfBlocksAndTablesInOneStateOnly) {
  const PlanContent before{{"2000", {{"gone", "", {{"a", "1"}}}}}, {"2001", {{"x", "", {{"b", "1"}}}}}};
  const PlanContent after{{"2000", {{"new", "", {{"c", "1"}}}}}, {"2002", {{"x", "", {{"d", "1"}}}}}};
  const auto changes = CompareTables(before, after);
  ASSERT_EQ(changes.size(), 3U);
  EXPECT_EQ(ChangeListing(changes),
            "added\t2000\tnew\t0\tc\n"
            "removed\t2000\tgone\t0\ta\n"
            "removed\t2001\tx\t0\tb\n"
            "added\t2002\tx\t0\td\n");
}

TEST(PlanChanges, AreFoundBetweenAPlanAndItsFile) {
  const TemporaryFolder folder;
  WriteText(folder / "garden.kpf", SmallPlanText());
  const auto before = PlanFile::Open(folder / "garden.kpf");
  const auto after = PlanFile::Open(folder / "garden.kpf");
  std::string document =
      R"(<tableitem id="20000000000000000000000000000600"><tableblocks><block id="db_income_range_cat3">)"
      R"(<row><c>Rent</c><c>0</c></row><row><c>Fuel</c><c>0</c></row><row><c>R&amp;D</c><c>*null*</c></row>)"
      R"(</block></tableblocks></tableitem>)";
  after->Data()->Deserialize(document);
  EXPECT_EQ(ChangeListing(CompareTables(*before, *after)),
            "added\t20000000000000000000000000000600\tdb_income_range_cat3\t1\tFuel\n"
            "cleared\t20000000000000000000000000000600\tdb_income_range_cat3\t2\tR&D\t1\t=SUM(B5:B5)\n");
}

std::vector<PlanRow> WideRows(int count, std::string_view amount) {
  std::vector<PlanRow> rows;
  for (int row = 0; row < count; ++row) {
    PlanRow& cells = rows.emplace_back(14, std::string(amount));
    cells[0] = fmt::format("Account {}", row);
  }
  rows.emplace_back(14, "=SUM(B1:B2)");
  return rows;
}

// Quadratic work on this many rows would take minutes.
TEST(PlanChanges, OfTwentyThousandRowsAreFoundInSeconds) {
  const PlanContent before = OneBlock(WideRows(20000, "0"));
  const PlanContent after = OneBlock(WideRows(20500, "1"));
  const auto begin = std::chrono::steady_clock::now();
  const auto changes = CompareTables(before, after);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
  EXPECT_EQ(changes[0].rowsAdded, 500);
  EXPECT_EQ(changes[0].cellsChanged, 20000 * 13);
}

TEST(PlanFile, OfTwentyThousandRowsIsReadLoadedAndSavedInSeconds) {
  const TemporaryFolder folder;
  std::string rows;
  for (int row = 0; row < 20000; ++row) {
    rows += fmt::format("<row><c>Account {}</c>{}</row>\n", row,
                        "<c>0</c><c>0</c><c>0</c><c>0</c><c>0</c><c>0</c>"
                        "<c>0</c><c>0</c><c>0</c><c>0</c><c>0</c><c>0</c><c>0</c>");
  }
  const std::string table =
      "<tableitem id='1'><tableblocks><block id='b'>" + rows + "</block></tableblocks></tableitem>";
  WriteText(folder / "big.kpf", "<plan><tables>" + table + "</tables></plan>");
  const auto begin = std::chrono::steady_clock::now();
  const auto plan = PlanFile::Open(folder / "big.kpf");
  std::string loaded = table;
  plan->Data()->Deserialize(loaded);
  plan->Save();
  EXPECT_FALSE(CompareTables(*PlanFile::Open(folder / "big.kpf.bak"), *plan)[0].Any());
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

}  // namespace
}  // namespace krnqb::plan_file
