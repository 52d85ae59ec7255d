#include "plan_file/alignment.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>

namespace krnqb::plan_file {
namespace {

using Rows = std::vector<PlanRow>;

// Returns the earlier index of each later row, "+" for an added row.
std::string Matches(const Rows& before, const Rows& after) {
  std::string text;
  for (const std::optional<std::size_t>& match : MatchRows(before, after)) {
    text += (text.empty() ? "" : " ") + (match ? fmt::format("{}", *match) : std::string("+"));
  }
  return text;
}

// Parses rows written as "name amount amount|name ...", with "_" for an empty cell.
Rows RowsOf(std::string_view text) {
  Rows rows;
  while (!text.empty()) {
    std::string_view row = text.substr(0, text.find('|'));
    text.remove_prefix(std::min(row.size() + 1, text.size()));
    PlanRow& cells = rows.emplace_back();
    while (!row.empty()) {
      const std::string_view cell = row.substr(0, row.find(' '));
      row.remove_prefix(std::min(cell.size() + 1, row.size()));
      cells.emplace_back(cell == "_" ? emptyCellText : cell);
    }
  }
  return rows;
}

struct MatchCase {
  const char* name;
  const char* before;
  const char* after;
  const char* matches;
};

class MatchedRows : public testing::TestWithParam<MatchCase> {};

TEST_P(MatchedRows, AreTheSameRowsBeforeAndAfter) {
  EXPECT_EQ(Matches(RowsOf(GetParam().before), RowsOf(GetParam().after)), GetParam().matches);
}

INSTANTIATE_TEST_SUITE_P(
    PlanAlignment, MatchedRows,
    testing::Values(
        MatchCase{"NoRowsAtAll", "", "", ""}, MatchCase{"NoRowsBefore", "", "a 0|b 0", "+ +"},
        MatchCase{"NoRowsAfter", "a 0|b 0", "", ""},
        MatchCase{"Unchanged", "a 0|_ 0|b 0", "a 0|_ 0|b 0", "0 1 2"},
        MatchCase{"ChangedAmounts", "a 0|_ 0|b 0", "a 1|_ 2|b 3", "0 1 2"},
        MatchCase{"AddedAboveTheClosingRow", "a 0|total =S", "a 0|n 0|m 0|total _", "0 + + 1"},
        MatchCase{"AddedWhileEverythingChanged", "a 0|b 0|total 1", "a 5|b 6|n 7|total 8", "0 1 + 2"},
        MatchCase{"AddedInSeveralPlaces", "a 0|b 0|c 0", "n 0|a 1|m 0|b 2|c 3|o 0", "+ 0 + 1 2 +"},
        MatchCase{"Removed", "a 0|b 0|c 0", "a 1|c 2", "0 2"},
        MatchCase{"ReplacedByAnother", "a 0|b 0|c 0", "a 0|n 0|c 0", "0 + 2"},
        MatchCase{"BlankRowAboveTheClosingRow", "a 0|total 0", "a 0|_ 0|total 0", "0 + 1"},
        MatchCase{"BlankRowBelowEarlierBlankRows", "a 0|_ 1|_ 2|total 3", "a 0|_ 1|_ 2|_ 0|total 3",
                  "0 1 2 + 3"},
        MatchCase{"BlankRowBelowChangedBlankRows", "a 0|_ 1|_ 2|total 3", "a 9|_ 8|_ 7|_ 6|total 5",
                  "0 1 2 + 3"},
        MatchCase{"BlankRowAboveBlankClosingRows", "a 0 0|_ 1 2|_ =S =S", "a 5 5|_ 0 0|_ 1 2|_ _ _",
                  "0 + 1 2"},
        MatchCase{"BlankRowsAmongBlankRowsOnly", "_ 1 1|_ 2 2|_ =S =S", "_ 1 4|_ 2 4|_ 0 0|_ 0 0|_ _ _",
                  "0 1 + + 2"},
        MatchCase{"BlankRowsAddedInTwoPlaces", "_ 1|_ 2|_ 3", "_ 1|_ 9|_ 2|_ 8|_ 3", "0 + 1 + 2"},
        MatchCase{"ClearedNameOfAClosingRow", "a 0|=A1 =S", "a 0|n 0|_ _", "0 + 1"},
        MatchCase{"NamesThatOccurTwice", "a 1|a 2|b 0", "a 1|n 0|a 2|b 0", "0 + 1 2"},
        MatchCase{"NameThatOccursTwiceAfterwards", "a 1 1|b 0", "a 1 2|a 9 9|b 7", "0 + 1"},
        MatchCase{"NameThatOccurredTwiceBefore", "a 1 2|a 9 9|b 7", "a 1 1|b 0", "0 2"},
        MatchCase{"NamesThatSwapPlaces", "a 1|b 2|c 3", "b 2|a 1|c 3", "1 + 2"},
        MatchCase{"OneBlankRowAndAllChanged", "_ 1|b 2", "_ 3|_ 4|b 5", "0 + 1"},
        MatchCase{"RowsWithoutCells", "a 0||b 0", "a 0|||b 0", "0 1 + 2"}),
    [](const testing::TestParamInfo<MatchCase>& test) { return std::string(test.param.name); });

TEST(PlanAlignment, CountsChangedCellsExceptClearedFormulas) {
  EXPECT_EQ(CellsChanged({"a", "1", "=S", "=T"}, {"a", "2", "*null*", "=U"}), 2U);
  EXPECT_EQ(CellsChanged({"a", "1"}, {"a", "*null*"}), 1U);
  EXPECT_EQ(CellsChanged({"a", "1", "2"}, {"a"}), 2U);
  EXPECT_EQ(CellsChanged({}, {}), 0U);
}

constexpr std::size_t manyRows = 20000;

// Returns many rows above one closing row, with other amounts in the later state.
Rows ManyRows(std::size_t count, bool named, bool later) {
  Rows rows;
  for (std::size_t row = 0; row < count; ++row) {
    rows.push_back(
        {named ? fmt::format("Account {}", row) : "*null*", fmt::format("{}", later ? row + 7 : row % 5)});
  }
  rows.push_back({named ? "Total" : "*null*", later ? "*null*" : "=SUM(B1:B9)"});
  return rows;
}

class ManyMatchedRows : public testing::TestWithParam<bool> {};

TEST_P(ManyMatchedRows, AreMatchedAroundAddedRows) {
  constexpr std::size_t added = 300;
  const auto matches =
      MatchRows(ManyRows(manyRows, GetParam(), false), ManyRows(manyRows + added, GetParam(), true));
  ASSERT_EQ(matches.size(), manyRows + added + 1);
  for (std::size_t row = 0; row < manyRows; ++row) ASSERT_EQ(matches[row], row);
  for (std::size_t row = manyRows; row < manyRows + added; ++row) ASSERT_EQ(matches[row], std::nullopt);
  EXPECT_EQ(matches.back(), manyRows);
}

TEST_P(ManyMatchedRows, AreMatchedAroundRemovedRows) {
  constexpr std::size_t removed = 300;
  Rows after = ManyRows(manyRows - removed, GetParam(), false);
  const auto matches = MatchRows(ManyRows(manyRows, GetParam(), false), after);
  for (std::size_t row = 0; row < manyRows - removed; ++row) ASSERT_EQ(matches[row], row);
  EXPECT_EQ(matches.back(), manyRows);
}

INSTANTIATE_TEST_SUITE_P(PlanAlignment, ManyMatchedRows, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& test) {
                           return test.param ? "Named" : "Blank";
                         });

// Rows of three names, each occurring many times.
Rows LargeBlock(std::size_t first, std::size_t middle, std::size_t last, std::string_view amount) {
  Rows rows(first, PlanRow{"Plants", std::string(amount)});
  rows.resize(first + middle, PlanRow{"Seeds", std::string(amount)});
  rows.resize(first + middle + last, PlanRow{"Tools", std::string(amount)});
  return rows;
}

TEST(PlanAlignment, MatchesTheRowsOfALargeBlockOnBothSidesOfOneGap) {
  const Rows longer = LargeBlock(60, 40, 60, "1");
  const Rows shorter = LargeBlock(60, 0, 60, "2");
  const auto removed = MatchRows(longer, shorter);
  for (std::size_t row = 0; row < 60; ++row) ASSERT_EQ(removed[row], row);
  for (std::size_t row = 60; row < 120; ++row) ASSERT_EQ(removed[row], row + 40);
  const auto added = MatchRows(shorter, longer);
  for (std::size_t row = 0; row < 60; ++row) ASSERT_EQ(added[row], row);
  for (std::size_t row = 60; row < 100; ++row) ASSERT_EQ(added[row], std::nullopt);
  for (std::size_t row = 100; row < 160; ++row) ASSERT_EQ(added[row], row - 40);
}

TEST(PlanAlignment, TakesTheLastOfManyEqualRowsInALargeBlockAsAdded) {
  const auto matches = MatchRows(LargeBlock(120, 0, 0, "1"), LargeBlock(160, 0, 0, "2"));
  for (std::size_t row = 0; row < 120; ++row) ASSERT_EQ(matches[row], row);
  for (std::size_t row = 120; row < 160; ++row) ASSERT_EQ(matches[row], std::nullopt);
}

}  // namespace
}  // namespace krnqb::plan_file
