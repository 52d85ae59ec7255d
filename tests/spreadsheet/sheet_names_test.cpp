#include "spreadsheet/sheet_names.h"

#include <gtest/gtest.h>

#include <string>

#include "spreadsheet/cell_text.h"

namespace krnqb::spreadsheet {
namespace {

TEST(SheetNames, ChangeWhatASpreadsheetRefuses) {
  SheetNames names;
  EXPECT_EQ(names.Add("Planned sales"), "Planned sales");
  EXPECT_EQ(names.Add("a[b]:c*d?e/f\\g"), "a-b--c-d-e-f-g");
  EXPECT_EQ(names.Add("'quoted' "), "quoted");
  EXPECT_EQ(names.Add("tab\there"), "tab here");
  EXPECT_EQ(names.Add(""), "Sheet");
  EXPECT_EQ(names.Add("'"), "Sheet (2)");
  EXPECT_EQ(names.Add("History"), "History (2)") << "a spreadsheet keeps this name for itself";
}

TEST(SheetNames, AreDifferentWhateverTheirCase) {
  SheetNames names;
  EXPECT_EQ(names.Add("Sales"), "Sales");
  EXPECT_EQ(names.Add("SALES"), "SALES (2)");
  EXPECT_EQ(names.Add("sales (2)"), "sales (2) (2)");
  EXPECT_EQ(names.Add("Größe"), "Größe");
  EXPECT_EQ(names.Add("GRÖßE"), "GRÖßE (2)");
}

TEST(SheetNames, HaveAtMost31CharactersAsSpreadsheetsCount) {
  SheetNames names;
  const std::string thirtyOne(31, 'x');
  EXPECT_EQ(names.Add(thirtyOne), thirtyOne);
  EXPECT_EQ(names.Add(thirtyOne + "y"), std::string(27, 'x') + " (2)");
  std::string flowers;
  for (int flower = 0; flower < 20; ++flower) flowers += "🌷";
  EXPECT_EQ(names.Add(flowers), flowers.substr(0, 15 * std::string("🌷").size()));
  EXPECT_EQ(names.Add(std::string(30, 'z') + "'z"), std::string(30, 'z'));
}

TEST(CellText, FitsACell) {
  EXPECT_EQ(CellText("a\nb\tc"), "a b c");
  const std::string longest(32'767, 'x');
  EXPECT_EQ(CellText(longest), longest);
  EXPECT_EQ(CellText(longest + "y"), std::string(32'766, 'x') + "…");
}

TEST(CellName, CountsColumnsByLetters) {
  EXPECT_EQ(CellName(0, 0), "A1");
  EXPECT_EQ(CellName(6, 25), "Z7");
  EXPECT_EQ(CellName(6, 26), "AA7");
  EXPECT_EQ(ColumnName(701), "ZZ");
  EXPECT_EQ(ColumnName(702), "AAA");
  EXPECT_EQ(ColumnName(16'383), "XFD");
}

}  // namespace
}  // namespace krnqb::spreadsheet
