#include "support/number_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

#include "krnqb/error.h"

namespace krnqb {
namespace {

TEST(ConvertToDouble, AcceptsWhatAutomationAccepts) {
  const std::vector<std::pair<std::string, double>> table = {
      {"0", 0},
      {"12", 12},
      {"-12.5", -12.5},
      {"+3", 3},
      {"3-", -3},
      {"3+", 3},
      {" 7 ", 7},
      {"\t7\r\n", 7},
      {"(250.50)", -250.5},
      {"$1,234.56", 1234.56},
      {"-$5", -5},
      {"$-5", -5},
      {"5$", 5},
      {"($5)", -5},
      {".5", 0.5},
      {"5.", 5},
      {"1e3", 1000},
      {"1E+3", 1000},
      {"1E-3", 0.001},
      {"1,2,3", 123},
      {"- 5", -5},
      {"14175.00", 14175},
      {"1e-400", 0},
  };
  for (const auto& [text, number] : table) EXPECT_EQ(ConvertToDouble(text), number) << '"' << text << '"';
}

TEST(ConvertToDouble, RejectsAnythingElse) {
  for (const std::string text :
       {"",   " ",   "abc",  "*null*", "=A1", "1 2", "--5",  "-5-", "(5",  "5)",  "(-5)",  "-(5)", ".",
        "1e", "1e+", "1..2", "$$5",    ",5",  "5,",  "0x10", "nan", "inf", "12%", "1e400", "1,.5", "5-$-"}) {
    EXPECT_FALSE(ConvertToDouble(text)) << '"' << text << '"';
  }
}

TEST(RequireDouble, ThrowsTypeMismatchForAnythingElse) {
  EXPECT_EQ(RequireDouble("1.5"), 1.5);
  try {
    RequireDouble("x");
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), error_number::typeMismatch);
  }
}

TEST(LeadingNumber, ReadsTheLeadingNumberAndIgnoresTheRest) {
  const std::vector<std::pair<std::string, double>> table = {
      {"", 0},       {"abc", 0},   {"12abc", 12}, {"  -3.5 USD", -3.5}, {"+4", 4},
      {"1,234", 1},  {".5x", 0.5}, {"-.5", -0.5}, {"1e2z", 100},        {"1e", 1},
      {"$5", 0},     {"--5", 0},   {"nan", 0},    {"infinity", 0},      {"4.", 4},
      {"1e-400", 0}, {"- 5", 0},
  };
  for (const auto& [text, number] : table) EXPECT_EQ(LeadingNumber(text), number) << '"' << text << '"';
}

TEST(LeadingNumber, ThrowsOverflowBeyondTheRangeOfADouble) {
  EXPECT_THROW(LeadingNumber("1e400"), Error);
}

TEST(GeneralNumberText, HasFifteenDigitsAndAnExponentForLargeAndSmallNumbers) {
  const std::vector<std::pair<double, std::string>> table = {
      {0.0, "0"},
      {-0.0, "0"},
      {1200, "1200"},
      {-250.5, "-250.5"},
      {0.07, "0.07"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {999999999999999.0, "999999999999999"},
      {1e15, "1E+15"},
      {1.5e16, "1.5E+16"},
      {0.0001, "0.0001"},
      {0.00001, "1E-05"},
      {-1e100, "-1E+100"},
      {123456789.125, "123456789.125"},
  };
  for (const auto& [number, text] : table) EXPECT_EQ(GeneralNumberText(number), text);
}

TEST(PlainNumberText, NeverHasAnExponent) {
  const std::vector<std::pair<double, std::string>> table = {
      {0.0, "0"},
      {-0.0, "0"},
      {1, "1"},
      {10, "10"},
      {-1234.5, "-1234.5"},
      {1e15, "1000000000000000"},
      {1.5e16, "15000000000000000"},
      {0.00001, "0.00001"},
      {-0.000125, "-0.000125"},
      {0.1 + 0.2, "0.3"},
      {99999.999, "99999.999"},
      {100.25, "100.25"},
  };
  for (const auto& [number, text] : table) EXPECT_EQ(PlainNumberText(number), text);
}

TEST(RequireInteger, RoundsHalvesToEvenAndChecksSixteenBits) {
  EXPECT_EQ(RequireInteger(2.5), 2);
  EXPECT_EQ(RequireInteger(3.5), 4);
  EXPECT_EQ(RequireInteger(-2.5), -2);
  EXPECT_EQ(RequireInteger(-0.4), 0);
  EXPECT_EQ(RequireInteger(32767.4), 32767);
  EXPECT_EQ(RequireInteger(-32768.5), -32768);
  EXPECT_THROW(RequireInteger(32767.5), Error);
  EXPECT_THROW(RequireInteger(std::numeric_limits<double>::quiet_NaN()), Error);
}

TEST(ReadsWhole, HoldsForBlankTextsAndNumbersWithOneReading) {
  for (const char* text : {"", "  ", "0", "12", "-12.50", "+3", " 7 ", "1e3", ".5", "5."})
    EXPECT_TRUE(ReadsWhole(text)) << text;
}

TEST(ReadsWhole, FailsForATextOfWhichOnlyAPartCounts) {
  for (const char* text : {"1,234.56", "(5.00)", "5-", "$5", "5 units", "50%", "abc", "-", "1.2.3", "1e999"})
    EXPECT_FALSE(ReadsWhole(text)) << text;
}

}  // namespace
}  // namespace krnqb
