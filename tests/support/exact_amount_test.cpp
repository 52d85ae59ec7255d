#include "support/exact_amount.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/error.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

TEST(ExactAmount, ReadsDecimalTexts) {
  struct Case {
    std::string_view text;
    std::optional<std::int64_t> millionths;
  };
  const std::vector<Case> cases = {
      {"0", 0},
      {"1", 1'000'000},
      {"-0.085", -85'000},
      {"+12.5", 12'500'000},
      {".5", 500'000},
      {"5.", 5'000'000},
      {"1.000001", 1'000'001},
      {"1.00000100", 1'000'001},
      {"9223372036854.775807", most},
      {"9223372036854.775808", std::nullopt},
      {"99999999999999999999999", std::nullopt},
      {"1.0000001", std::nullopt},
      {"", std::nullopt},
      {"-", std::nullopt},
      {".", std::nullopt},
      {"1.2.3", std::nullopt},
      {"1,234", std::nullopt},
      {"1e3", std::nullopt},
      {" 1", std::nullopt},
      {"--1", std::nullopt},
  };
  for (const Case& test : cases) {
    const std::optional<ExactAmount> amount = ExactAmount::FromText(test.text);
    ASSERT_EQ(amount.has_value(), test.millionths.has_value()) << test.text;
    if (!amount) continue;
    EXPECT_EQ(amount->Millionths(), *test.millionths) << test.text;
  }
}

TEST(ExactAmount, RoundsDoublesToTheNearestMillionthHalvesToEven) {
  struct Case {
    double amount;
    std::int64_t millionths;
  };
  const std::vector<Case> cases = {
      {0, 0},
      {0.1 + 0.2, 300'000},
      {-921.65, -921'650'000},
      {0.0000004, 0},
      {std::ldexp(1.0, -7), 7'812},       // 0.0078125: exactly a half above an even millionth
      {3 * std::ldexp(1.0, -7), 23'438},  // 0.0234375: exactly a half below an even one
      {-std::ldexp(1.0, -7), -7'812},
      {std::nextafter(std::ldexp(1.0, -7), 1), 7'813},
      {std::ldexp(1.0, 42), 4'398'046'511'104'000'000},
      {9'007'199'254'740.993, 9'007'199'254'740'992'188},
  };
  for (const Case& test : cases)
    EXPECT_EQ(ExactAmount::From(test.amount).Millionths(), test.millionths) << test.amount;
}

TEST(ExactAmount, RefusesDoublesOutOfRange) {
  for (const double amount : {9.3E+12, -9.3E+12, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(tests::NumberThrownBy([&] { ExactAmount::From(amount); }), error_number::overflow) << amount;
  }
}

TEST(ExactAmount, AddsSubtractsAndComparesExactly) {
  ExactAmount sum;
  for (int count = 0; count < 1'000; ++count) sum += ExactAmount::From(0.1);
  EXPECT_EQ(sum, ExactAmount::From(100));
  EXPECT_EQ((sum - ExactAmount::From(100.000001)).Millionths(), -1);
  EXPECT_LT(-sum, ExactAmount());
  EXPECT_DOUBLE_EQ(ExactAmount::From(-12.34).AsDouble(), -12.34);
}

TEST(ExactAmount, ThrowsOverflowInsteadOfWrapping) {
  const ExactAmount highest = ExactAmount::FromMillionths(most);
  const ExactAmount lowest = ExactAmount::FromMillionths(least);
  const ExactAmount one = ExactAmount::FromMillionths(1);
  EXPECT_EQ(tests::NumberThrownBy([&] { static_cast<void>(highest + one); }), error_number::overflow);
  EXPECT_EQ(tests::NumberThrownBy([&] { static_cast<void>(lowest - one); }), error_number::overflow);
  EXPECT_EQ(tests::NumberThrownBy([&] { static_cast<void>(-lowest); }), error_number::overflow);
}

TEST(ExactAmount, IsMadeOfHundredths) {
  EXPECT_EQ(ExactAmount::FromHundredths(-123'456), ExactAmount::From(-1'234.56));
  EXPECT_EQ(ExactAmount::FromHundredths(922'337'203'685'477).Millionths(), 9'223'372'036'854'770'000);
  for (const std::int64_t tooLarge : {std::int64_t{922'337'203'685'478}, most, least}) {
    const Error error = tests::ThrownError([&] { ExactAmount::FromHundredths(tooLarge); });
    EXPECT_EQ(error.Number(), error_number::overflow);
    EXPECT_EQ(error.Description(), "an amount exceeds 9,223,372,036,854.78");
  }
}

TEST(ExactAmount, HasTwoToSixDecimalsAsText) {
  struct Case {
    std::int64_t millionths;
    std::string_view text;
    std::string_view plain;
  };
  const std::vector<Case> cases = {
      {0, "0.00", "0.00"},
      {-85'000, "-0.085", "-0.085"},
      {1, "0.000001", "0.000001"},
      {999'990'000, "999.99", "999.99"},
      {-999'990'000, "-999.99", "-999.99"},
      {1'234'500'000, "1,234.50", "1234.50"},
      {-1'234'567'891'200, "-1,234,567.8912", "-1234567.8912"},
      {least, "-9,223,372,036,854.775808", "-9223372036854.775808"},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(ExactAmount::FromMillionths(test.millionths).Text(), test.text);
    EXPECT_EQ(ExactAmount::FromMillionths(test.millionths).PlainText(), test.plain);
  }
}

}  // namespace
}  // namespace krnqb
