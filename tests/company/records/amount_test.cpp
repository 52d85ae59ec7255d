#include "company/records/amount.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "thrown_error.h"

namespace krnqb::company {
namespace {

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

TEST(CompanyAmount, IsParsedInHundredths) {
  struct Case {
    std::string_view text;
    std::optional<std::int64_t> hundredths;
  };
  const std::vector<Case> cases = {
      {"14175.00", 1417500}, {"0.00", 0},
      {"-0.05", -5},         {"12", 1200},
      {"0.1", 10},           {"1.125", 113},
      {"-2.5", -250},        {"1.234", 123},
      {" 7.25 ", 725},       {"", {}},
      {"none", {}},          {"12 pieces", {}},
      {"1e13", {}},          {"999999999999.99", 99999999999999},
      {"4.35", 435},         {"-1.125", -113},
  };
  for (const auto& [text, hundredths] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Hundredths(text), hundredths);
  }
}

TEST(CompanyAmount, IsFormattedAsInRecords) {
  struct Case {
    std::int64_t hundredths;
    std::string_view text;
  };
  const std::vector<Case> cases = {{1417500, "14175.00"},
                                   {0, "0.00"},
                                   {-5, "-0.05"},
                                   {7, "0.07"},
                                   {-250, "-2.50"},
                                   {-100, "-1.00"},
                                   {most, "92233720368547758.07"},
                                   {least, "-92233720368547758.08"}};
  for (const auto& [hundredths, text] : cases) EXPECT_EQ(AmountText(hundredths), text);
}

TEST(CompanyAmount, IsAddedAndSubtractedWithin64Bits) {
  EXPECT_EQ(Sum(most - 1, 1), most);
  EXPECT_EQ(Sum(most, least), -1);
  EXPECT_EQ(Difference(least, -1), least + 1);
  EXPECT_EQ(Difference(0, most), -most);
  struct Case {
    std::int64_t (*compute)(std::int64_t, std::int64_t);
    std::int64_t amount, other;
  };
  for (const auto& [compute, amount, other] :
       {Case{Sum, most, 1}, {Sum, least, -1}, {Difference, least, 1}, {Difference, 0, least}}) {
    const Error error = tests::ThrownError([&] { compute(amount, other); });
    EXPECT_EQ(error.Number(), error_number::overflow);
    EXPECT_EQ(error.Description(),
              "The amounts of the company add up to more than 92,233,720,368,547,758.07; a record of its "
              "transactions, items or accounts must be wrong");
  }
}

}  // namespace
}  // namespace krnqb::company
