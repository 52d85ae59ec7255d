#include "company/records/amount.h"

#include <gtest/gtest.h>

#include <vector>

namespace krnqb::company {
namespace {

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
  const std::vector<Case> cases = {{1417500, "14175.00"}, {0, "0.00"},     {-5, "-0.05"},
                                   {7, "0.07"},           {-250, "-2.50"}, {-100, "-1.00"}};
  for (const auto& [hundredths, text] : cases) EXPECT_EQ(AmountText(hundredths), text);
}

}  // namespace
}  // namespace krnqb::company
