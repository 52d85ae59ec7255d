#include "cli/console/decimal_text.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/number_text.h"

namespace krnqb::cli {
namespace {

TEST(DecimalText, OfANumberHasAtLeastTwoDecimalsAndNoExponent) {
  struct Case {
    double amount;
    std::string text;
  };
  const std::vector<Case> cases{{0, "0.00"},
                                {-0.0, "0.00"},
                                {28414.8, "28414.80"},
                                {-12.5, "-12.50"},
                                {1, "1.00"},
                                {0.125, "0.125"},
                                {1.0000000149011612, "1.00000001490116"},
                                {0.1 + 0.2, "0.30"},
                                {53124.299999999996, "53124.30"},
                                {1e15, "1000000000000000.00"},
                                {1e21, "1000000000000000000000.00"},
                                {1e-7, "0.0000001"},
                                {-2.5e-5, "-0.000025"},
                                {-2e-300, "-0." + std::string(299, '0') + "2"}};
  for (const Case& tested : cases) EXPECT_EQ(DecimalText(tested.amount), tested.text);
}

TEST(DecimalText, OfANumberIsADecimalNumberOfItsSize) {
  for (const double amount :
       {1.0 / 3, 123456789012345678.0, 1e308, -1e308, std::numeric_limits<double>::min()}) {
    const std::string text = DecimalText(amount);
    EXPECT_EQ(text.find_first_not_of("-.0123456789"), std::string::npos) << text;
    EXPECT_NEAR(*ConvertToDouble(text) / amount, 1, 1e-14) << text;
  }
}

TEST(DecimalText, OfATextKeepsItsDigits) {
  struct Case {
    std::string text;
    std::optional<std::string> money;
  };
  const std::vector<Case> cases{{"28611.15", "28611.15"},
                                {"5", "5.00"},
                                {"-5.5", "-5.50"},
                                {"-0.00", "0.00"},
                                {"-0", "0.00"},
                                {"12345678901234567890.123", "12345678901234567890.123"},
                                // Forms that only some readers of numbers know.
                                {"1,234.56", "1234.56"},
                                {"(5.00)", "-5.00"},
                                {"$7.5", "7.50"},
                                {"007.5", "7.50"},
                                {".5", "0.50"},
                                {"5.", "5.00"},
                                {"+5", "5.00"},
                                {" 5 ", "5.00"},
                                {"1E3", "1000.00"},
                                // Texts that are not numbers.
                                {"", std::nullopt},
                                {"-", std::nullopt},
                                {".", std::nullopt},
                                {"five", std::nullopt},
                                {"1.2.3", std::nullopt},
                                {"1E999", std::nullopt}};
  for (const Case& tested : cases)
    EXPECT_EQ(DecimalText(std::string_view(tested.text)), tested.money) << tested.text;
}

}  // namespace
}  // namespace krnqb::cli
