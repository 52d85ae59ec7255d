#include "plan_file/growth_formula.h"

#include <gtest/gtest.h>

namespace krnqb::plan_file {
namespace {

TEST(GrowthFormula, IsReadInBothForms) {
  EXPECT_EQ(ParseGrowthFormula("=2600* (1 + B14)"), (GrowthFormula{2600, 14}));
  EXPECT_EQ(ParseGrowthFormula("=1820 * (1 + B9)"), (GrowthFormula{1820, 9}));
  EXPECT_EQ(ParseGrowthFormula("=-250.5* (1 + B13)"), (GrowthFormula{-250.5, 13}));
  EXPECT_EQ(ParseGrowthFormula("=1.5E+15* (1 + B5)"), (GrowthFormula{1.5E+15, 5}));
  EXPECT_EQ(ParseGrowthFormula("=2E-05 * (1 + B5)"), (GrowthFormula{2E-05, 5}));
  EXPECT_EQ(ParseGrowthFormula("=0* (1 + B0)"), (GrowthFormula{0, 0}));
}

TEST(GrowthFormula, IsNoOtherText) {
  for (const std::string_view text : {"",
                                      "=",
                                      "2600",
                                      "2600* (1 + B14)",
                                      "=SUM(C5:C7)",
                                      "=* (1 + B14)",
                                      "= * (1 + B14)",
                                      "=2600  * (1 + B14)",
                                      "=2600*(1 + B14)",
                                      "=2600* (1 + C14)",
                                      "=2600* (1 + B14)+1",
                                      "=2600* (1 + B14",
                                      "=2600* (1 + B)",
                                      "=2600* (1 + B14.5)",
                                      "=2600* (1 + B 14)",
                                      "=C5* (1 + B14)",
                                      "=1,000* (1 + B14)",
                                      "=$5* (1 + B14)",
                                      "=--5* (1 + B14)",
                                      "=1E+999* (1 + B14)",
                                      "=5* (1 + B99999999999999999999)",
                                      "=5* (1 + B14)* (1 + B14)"}) {
    EXPECT_FALSE(ParseGrowthFormula(text)) << text;
  }
}

PlanBlock BlockOfRate(std::string_view rate, std::string_view startRow = "12") {
  return {"db_income_range_cat3",
          std::string(startRow),
          {{"Fuel", "0.5", "=1* (1 + B12)"}, {"Rent", std::string(rate), "=1000* (1 + B13)"}}};
}

TEST(GrownAmount, IsTheAmountGrownByTheRateOfItsRow) {
  EXPECT_EQ(GrownAmount(BlockOfRate("0.1"), 1, "=1000* (1 + B13)"), 1000 * (1 + 0.1));
  EXPECT_EQ(GrownAmount(BlockOfRate("-0.25"), 1, "=1000* (1 + B13)"), 750);
  EXPECT_EQ(GrownAmount(BlockOfRate("0"), 1, "=1000 * (1 + B13)"), 1000);
  EXPECT_EQ(GrownAmount(BlockOfRate("*null*"), 1, "=1000* (1 + B13)"), 1000);
  EXPECT_EQ(GrownAmount(BlockOfRate(""), 1, "=1000* (1 + B13)"), 1000);
}

TEST(GrownAmount, IsUnknownIfTheFormulaRefersToAnotherRow) {
  EXPECT_FALSE(GrownAmount(BlockOfRate("0.1"), 1, "=1000* (1 + B12)"));
  EXPECT_FALSE(GrownAmount(BlockOfRate("0.1"), 0, "=1000* (1 + B13)"));
  EXPECT_FALSE(GrownAmount(BlockOfRate("0.1"), 1, "=1000* (1 + B-1)"));
  EXPECT_FALSE(GrownAmount(BlockOfRate("0.1"), 2, "=1000* (1 + B14)"));
}

TEST(GrownAmount, IsUnknownIfTheBlockHasNoPlaceOnTheSheet) {
  for (const std::string_view startRow : {"", "0", "-5", "x", "1.5"}) {
    EXPECT_FALSE(GrownAmount(BlockOfRate("0.1", startRow), 1, "=1000* (1 + B1)")) << startRow;
    EXPECT_FALSE(GrownAmount(BlockOfRate("0.1", startRow), 1, "=1000* (1 + B-4)")) << startRow;
  }
}

TEST(GrownAmount, IsUnknownIfTheRateIsNoNumber) {
  EXPECT_FALSE(GrownAmount(BlockOfRate("=B12"), 1, "=1000* (1 + B13)"));
  EXPECT_FALSE(GrownAmount(BlockOfRate("high"), 1, "=1000* (1 + B13)"));
}

}  // namespace
}  // namespace krnqb::plan_file
