#include <gtest/gtest.h>

#include <string>

#include "fakes/amount_tables.h"
#include "fakes/import_surroundings.h"
#include "import/growth/formulas.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

using fakes::AmountBlock;
using fakes::CellsOf;

class GrowthNumberTexts : public testing::Test {
 protected:
  GrowthNumberTexts() {
    state.options.balancesImport = BalImport_All;
    state.incomeSubtotals = fakes::ImportSurroundings::Zeros({"Plants"});
  }

  std::string Write() {
    const XmlElement tableBlocks = XmlElement::Parse(
        "<tableblocks>" +
        AmountBlock("db_sales_values_sales", "startrow=\"5\"", fakes::PlannedRow("Plants")) +
        AmountBlock("db_sales_values_sales_actual", "", fakes::ActualRow("Plants")) + "</tableblocks>");
    TablesDocument tables;
    tables.Add("1", tableBlocks, clock);
    WriteSalesGrowth(state, tables, observer);
    return tables.Text();
  }

  ImportState state;
  fakes::RecordingObserver observer;
  fakes::FixedClock clock{LocalDateTime{2002, 1, 1, 9, 0, 0}};
};

struct RateCase {
  std::int16_t percent;
  const char* text;
};

TEST_F(GrowthNumberTexts, OfARateHaveNoTrailingZeros) {
  for (const auto& [percent, text] : {RateCase{0, "0"},
                                      {7, "0.07"},
                                      {10, "0.1"},
                                      {29, "0.29"},
                                      {57, "0.57"},
                                      {58, "0.58"},
                                      {100, "1"},
                                      {115, "1.15"},
                                      {125, "1.25"},
                                      {200, "2"},
                                      {-5, "-0.05"},
                                      {-100, "-1"},
                                      {32767, "327.67"},
                                      {-32768, "-327.68"}}) {
    state.options.growthRateIncome = percent;
    EXPECT_EQ(CellsOf(Write(), "db_sales_values_sales", 0)[1], text) << percent;
  }
}

TEST_F(GrowthNumberTexts, OfEveryRateParseAsItsHundredths) {
  for (std::int16_t percent = -300; percent <= 300; ++percent) {
    state.options.growthRateIncome = percent;
    const std::string text = CellsOf(Write(), "db_sales_values_sales", 0)[1];
    EXPECT_EQ(ConvertToDouble(text), static_cast<double>(percent) / 100) << percent;
    EXPECT_LE(text.size(), 5U) << text;
  }
}

struct AmountCase {
  double amount;
  const char* text;
};
const AmountCase amounts[] = {{1200, "1200"},
                              {-250.5, "-250.5"},
                              {0.25, "0.25"},
                              {-0.0, "0"},
                              {0.1 + 0.2, "0.3"},
                              {1.0 / 3, "0.333333333333333"},
                              {2.0 / 3, "0.666666666666667"},
                              {123456789012345, "123456789012345"},
                              {999999999999999, "999999999999999"},
                              {1E15, "1E+15"},
                              {-1E15, "-1E+15"},
                              {1234567890123456, "1.23456789012346E+15"},
                              {999999999999999.9, "1E+15"},
                              {2.5E100, "2.5E+100"},
                              {1.7976931348623157E308, "1.79769313486232E+308"},
                              {0.0001, "0.0001"},
                              {0.00012345, "0.00012345"},
                              {0.00001, "1E-05"},
                              {0.000099, "9.9E-05"},
                              {-2.5E-7, "-2.5E-07"},
                              {1E-300, "1E-300"}};

TEST_F(GrowthNumberTexts, OfAmountsUseTheGeneralForm) {
  for (const auto& [amount, text] : amounts) {
    state.incomeSubtotals->At("Plants").SubTotal(1, amount);
    state.incomeSubtotals->At("Plants").SubTotal(12, amount);
    const std::string written = Write();
    EXPECT_EQ(CellsOf(written, "db_sales_values_sales_actual", 0)[1], text);
    EXPECT_EQ(CellsOf(written, "db_sales_values_sales_actual", 0)[12], text);
    EXPECT_EQ(CellsOf(written, "db_sales_values_sales", 0)[2], std::string("=") + text + " * (1 + B5)");
    EXPECT_EQ(CellsOf(written, "db_sales_values_sales", 0)[13], std::string("=") + text + " * (1 + B5)");
  }
}

}  // namespace
}  // namespace krnqb
