#include "cli/console/text_table.h"

#include <gtest/gtest.h>

namespace krnqb::cli {
namespace {

TEST(TextTable, AlignsColumnsLeftOrRight) {
  TextTable table({Alignment::Left, Alignment::Right});
  table.AddRow({"Table", "Rows"});
  table.AddRow({"Sales and costs", "7"});
  EXPECT_EQ(table.Text(),
            "Table            Rows\n"
            "Sales and costs     7\n");
}

TEST(TextTable, CountsCharactersNotBytes) {
  TextTable table({Alignment::Left, Alignment::Left});
  table.AddRow({"Café", "x"});
  table.AddRow({"Cafes", "y"});
  EXPECT_EQ(table.Text(), "Café   x\nCafes  y\n");
}

TEST(TextTable, RemovesTrailingSpaces) {
  TextTable table({Alignment::Left, Alignment::Left});
  table.AddRow({"long name", "selected"});
  table.AddRow({"short", ""});
  EXPECT_EQ(table.Text("  "), "  long name  selected\n  short\n");
}

TEST(TextTable, PrintsACellOnOneLine) {
  TextTable table({Alignment::Left});
  table.AddRow({"two\r\nlines \x1b[31m"});
  EXPECT_EQ(table.Text(), "two lines  [31m\n");
}

TEST(TextTable, AcceptsRowsWithFewerCells) {
  TextTable table({Alignment::Left, Alignment::Left});
  table.AddRow({"a"});
  table.AddRow({"bb", "c"});
  EXPECT_EQ(table.Text(), "a\nbb  c\n");
}

TEST(TextTable, DoesNotPadToACellThatIsWiderThanALine) {
  TextTable table({Alignment::Left, Alignment::Right, Alignment::Left});
  table.AddRow({"Account", "Balance", "Type"});
  table.AddRow({std::string(101, 'x'), "1.00", "Expense"});
  table.AddRow({std::string(100, 'y'), std::string(101, '9'), "Income"});
  EXPECT_EQ(table.Text(), "Account" + std::string(93, ' ') + "  Balance  Type\n" + std::string(101, 'x') +
                              "     1.00  Expense\n" + std::string(100, 'y') + "  " + std::string(101, '9') +
                              "  Income\n");
}

TEST(OneLine, HasABlankInPlaceOfADeleteCharacter) {
  EXPECT_EQ(OneLine("Ren\x7Ft"), "Ren t");
}

}  // namespace
}  // namespace krnqb::cli
