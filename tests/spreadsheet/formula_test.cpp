#include "spreadsheet/formula.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace krnqb::spreadsheet {
namespace {

// B2 to B4 are 1, 2 and 3; C2 is a text, C3 empty; everything else is unknown.
FoundCell Cell(const CellPlace& place) {
  if (place.column == 1 && place.row >= 2 && place.row <= 4)
    return {FoundCell::Kind::Number, place.row - 1.0};
  if (place == CellPlace{2, 2}) return {FoundCell::Kind::Text};
  if (place == CellPlace{3, 2}) return {FoundCell::Kind::Nothing};
  return {FoundCell::Kind::Unknown};
}

struct FormulaCase {
  std::string_view formula;
  double result;
};

TEST(ComputeFormula, ComputesAsSpreadsheetsDo) {
  const FormulaCase cases[]{{"=-12.5* (1 + B3)", -37.5},
                            {"=1820 * (1 + B2)", 3640},
                            {"=1E+3*2", 2000},
                            {"=2+3*4-6/2", 11},
                            {"=(2+3)*4", 20},
                            {"=-B4+-2", -5},
                            {"=2--2", 4},
                            {"=$B$4-b$2", 2},
                            {"=C3+1", 1},
                            {"=SUM(B2:B4)", 6},
                            {"=sum(B4:B2)", 6},
                            {"=SUM(B2:C3)", 3},
                            {"=SUM(C2)", 0},
                            {"=SUM(B2,B4*2,10)", 17},
                            {"=AVERAGE(B2:B4)", 2},
                            {"=MIN(B2:B4)+MAX(B3,B2)", 3},
                            {"= 1", 1}};
  for (const FormulaCase& test : cases)
    EXPECT_EQ(ComputeFormula(test.formula, Cell), test.result) << test.formula;
}

TEST(ComputeFormula, RefusesWhatItCannotBeSureOf) {
  for (const std::string_view formula : {"",
                                         "=",
                                         "5",
                                         "=1+",
                                         "=(1",
                                         "=1)",
                                         "=B1",
                                         "=A2+1",
                                         "=C2+1",
                                         "=SUM(B1:B4)",
                                         "=SUM(A2:B4)",
                                         "=SUM(B2:B5)",
                                         "=AVERAGE(C2:C3)",
                                         "=1/0",
                                         "=1/C3",
                                         "=1E+308*10",
                                         "=ROUND(B2,1)",
                                         "=SUM (B2)",
                                         "=SUM()",
                                         "=SUM(B2:)",
                                         "=SUM(B2:B3+1)",
                                         "=B2:B4",
                                         "=Sheet2!B2",
                                         "=B2!B3",
                                         "='x'!B2",
                                         "=\"a\"",
                                         "=B2%",
                                         "=B2^2",
                                         "=TRUE",
                                         "=B0",
                                         "=B99999999999",
                                         "=ABCD1",
                                         "=LOG10(B2)",
                                         "=B2 B3",
                                         "=HYPERLINK(\"x\")",
                                         "=cmd|' /c x'!A0",
                                         "=B2&B3"}) {
    EXPECT_EQ(ComputeFormula(formula, Cell), std::nullopt) << formula;
  }
}

TEST(ComputeFormula, RefusesDeepNestingAndLongTexts) {
  EXPECT_TRUE(ComputeFormula("=" + std::string(20, '(') + "1" + std::string(20, ')'), Cell));
  EXPECT_FALSE(ComputeFormula("=" + std::string(3000, '(') + "1" + std::string(3000, ')'), Cell));
  EXPECT_FALSE(ComputeFormula("=" + std::string(3000, '-') + "1", Cell));
  EXPECT_FALSE(ComputeFormula("=1" + std::string(8192, ' '), Cell));
}

TEST(ComputeFormula, AsksForTheCornersOfARangeBeforeItsCells) {
  int asked = 0;
  const auto unknown = [&](const CellPlace&) {
    ++asked;
    return FoundCell{};
  };
  EXPECT_FALSE(ComputeFormula("=SUM(A1:XFD1048576)", unknown));
  EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace krnqb::spreadsheet
