#include "support/money_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace krnqb {
namespace {

TEST(MoneyText, HasTwoDecimalsAndThousands) {
  EXPECT_EQ(MoneyText(0), "0.00");
  EXPECT_EQ(MoneyText(-0.001), "0.00");
  EXPECT_EQ(MoneyText(999.999), "1,000.00");
  EXPECT_EQ(MoneyText(28414.8), "28,414.80");
  EXPECT_EQ(MoneyText(-1234567.5), "-1,234,567.50");
  EXPECT_EQ(MoneyText(-100), "-100.00");
}

TEST(MoneyText, RoundsToWholeUnits) {
  EXPECT_EQ(MoneyText(28414.8, MoneyForm::WholeUnits), "28,415");
  EXPECT_EQ(MoneyText(-0.4, MoneyForm::WholeUnits), "0");
  EXPECT_EQ(MoneyText(999.6, MoneyForm::WholeUnits), "1,000");
}

TEST(MoneyText, OfHugeAmountsStaysShort) {
  EXPECT_EQ(MoneyText(999'999'999'999'999), "999,999,999,999,999.00");
  EXPECT_EQ(MoneyText(1E+15), "1E+15");
  EXPECT_EQ(MoneyText(-1E+300), "-1E+300");
  EXPECT_EQ(MoneyText(std::numeric_limits<double>::infinity()), "out of range");
}

}  // namespace
}  // namespace krnqb
