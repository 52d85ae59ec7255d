#include "plan_file/views/split_table.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/display_width.h"

namespace krnqb::plan_file {
namespace {

// A heading and two rows of a rate, twelve months and a sum, each cell as wide as `cell`.
std::vector<TableLine> Year(const std::string& name, const std::string& cell) {
  TableLine heading{{""}, true};
  TableLine row{{name}};
  for (int column = 0; column < 14; ++column) {
    heading.texts.push_back("m" + std::to_string(column));
    row.texts.push_back(cell);
  }
  return {heading, row};
}

TableLayout YearLayout(std::size_t width) {
  return {.width = width, .columnsBefore = 1, .columnsAfter = 1};
}

std::size_t LongestLine(const std::string& text) {
  std::istringstream lines(text);
  std::size_t longest = 0;
  for (std::string line; std::getline(lines, line);) longest = std::max(longest, DisplayWidth(line));
  return longest;
}

TEST(SplitTable, AlignsNamesLeftAndCellsRight) {
  EXPECT_EQ(SplitTableText({{{"", "Jan", "Feb"}}, {{"Café", "1", "1,200"}}, {{"売上", "-20"}}}, {}),
            "        Jan    Feb\n"
            "  Café    1  1,200\n"
            "  売上  -20\n");
}

TEST(SplitTable, StaysWholeAsLongAsItFits) {
  // indent 2, name 4, 14 columns of 3 and their gaps of 2
  EXPECT_EQ(PartCount(Year("Rent", "123"), YearLayout(76)), 1U);
  EXPECT_EQ(PartCount(Year("Rent", "123"), YearLayout(75)), 2U);
}

TEST(SplitTable, IsSplitIntoHalvesOfTheYear) {
  EXPECT_EQ(SplitTableText(Year("Rent", "12345"), YearLayout(60)),
            "           m0     m1     m2     m3     m4     m5     m6\n"
            "  Rent  12345  12345  12345  12345  12345  12345  12345\n"
            "\n"
            "           m7     m8     m9    m10    m11    m12    m13\n"
            "  Rent  12345  12345  12345  12345  12345  12345  12345\n");
}

TEST(SplitTable, IsSplitFurtherWhereHalvesAreTooWide) {
  EXPECT_EQ(PartCount(Year("Rent", "1234567"), YearLayout(60)), 3U);
  EXPECT_EQ(PartCount(Year("Rent", "123456789"), YearLayout(60)), 4U);
  EXPECT_EQ(PartCount(Year("Rent", "123456789012"), YearLayout(60)), 6U);
  EXPECT_EQ(PartCount(Year("Rent", "1234567890123456789012345"), YearLayout(60)), 12U);
}

TEST(SplitTable, HasNoLineLongerThanItsWidth) {
  for (const std::size_t width : {20U, 33U, 60U, 80U, 132U}) {
    for (const std::size_t cell : {1U, 9U, 21U, 300U}) {
      for (const std::string& name :
           {std::string("Rent"), std::string(90, 'n'), std::string("売上原価売上原価")}) {
        const std::string text = SplitTableText(Year(name, std::string(cell, '8')), YearLayout(width));
        EXPECT_LE(LongestLine(text), width) << width << ' ' << cell << ' ' << name << '\n' << text;
      }
    }
  }
}

TEST(SplitTable, ShortensOnlyNamesLongerThanHalfALine) {
  EXPECT_NE(SplitTableText(Year(std::string(30, 'n'), "12345"), YearLayout(60)).find(std::string(30, 'n')),
            std::string::npos);
  EXPECT_NE(
      SplitTableText(Year(std::string(31, 'n'), "12345"), YearLayout(60)).find(std::string(29, 'n') + "… "),
      std::string::npos);
}

TEST(SplitTable, RepeatsNamesAndHeadingsInEachPartButNotRowsThatHaveEnded) {
  const std::vector<TableLine> lines{{{"", "a", "b"}, true},
                                     {{"Group"}, true},
                                     {{"Rent", "1234567890", "1234567890"}},
                                     {{"Fuel", "1"}},
                                     {{"alone"}}};
  EXPECT_EQ(SplitTableText(lines, {.width = 20}),
            "                 a\n"
            "  Group\n"
            "  Rent  1234567890\n"
            "  Fuel           1\n"
            "  alone\n"
            "\n"
            "                 b\n"
            "  Group\n"
            "  Rent  1234567890\n");
}

TEST(SplitTable, PutsAsManyOtherColumnsIntoAPartAsFit) {
  TableLine row{{"x"}};
  for (int column = 0; column < 9; ++column) row.texts.push_back("12345");
  EXPECT_EQ(PartCount({row}, {.width = 38}), 2U);
  EXPECT_EQ(PartCount({row}, {.width = 37}), 3U);
}

TEST(SplitTable, OfNothingIsEmpty) {
  EXPECT_EQ(SplitTableText({}, {}), "");
  EXPECT_EQ(SplitTableText({TableLine{}}, {}), "\n");
}

}  // namespace
}  // namespace krnqb::plan_file
