#include "cli/console/option_values.h"

#include <gtest/gtest.h>

#include <functional>

#include "cli/console/failure.h"

namespace krnqb::cli {
namespace {

std::string LineOf(const std::function<void()>& parse) {
  try {
    parse();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Code(), ExitCode::WrongUsage);
    return failure.Line();
  }
  return "no failure";
}

TEST(ParseYearMonth, AcceptsYearAndMonth) {
  EXPECT_EQ(ParseYearMonth("--plan-start", "2003-01"), (YearMonth{2003, 1}));
  EXPECT_EQ(ParseYearMonth("--plan-start", "9999-12"), (YearMonth{9999, 12}));
}

TEST(ParseYearMonth, RejectsEverythingElse) {
  for (const std::string text : {"", "2003", "2003-1", "2003-13", "2003-00", "03-01", "2003/01", "2003-01-01",
                                 "0999-01", "x003-01", " 2003-01"}) {
    EXPECT_EQ(LineOf([&] { ParseYearMonth("--plan-start", text); }),
              "krnqb: wrong usage: --plan-start \"" + text +
                  "\" is not a year and month; write YYYY-MM, for example 2003-01");
  }
}

TEST(ParseMonth, AcceptsANumberOrAnEnglishName) {
  EXPECT_EQ(ParseMonth("--fiscal-month", "1"), 1);
  EXPECT_EQ(ParseMonth("--fiscal-month", "12"), 12);
  EXPECT_EQ(ParseMonth("--fiscal-month", "07"), 7);
  EXPECT_EQ(ParseMonth("--fiscal-month", "January"), 1);
  EXPECT_EQ(ParseMonth("--fiscal-month", "dEcember"), 12);
}

TEST(ParseMonth, RejectsEverythingElse) {
  for (const std::string text : {"", "0", "13", "-1", "99999999", "Jan", "Janvier", "1.0"}) {
    EXPECT_EQ(LineOf([&] { ParseMonth("--fiscal-month", text); }),
              "krnqb: wrong usage: --fiscal-month \"" + text +
                  "\" is not a month; give 1 to 12 or an English name such as January");
  }
}

TEST(ParseDate, AcceptsCalendarDates) {
  EXPECT_EQ(ParseDate("--from", "2002-01-31"), "2002-01-31");
  EXPECT_EQ(ParseDate("--from", "2004-02-29"), "2004-02-29");
}

TEST(ParseDate, RejectsEverythingElse) {
  for (const std::string text : {"", "2002-02-29", "2002-04-31", "2002-01-00", "2002-1-1", "2002-01",
                                 "31.01.2002", "2002-01-3x", "2002-01-31 "}) {
    EXPECT_EQ(LineOf([&] { ParseDate("--from", text); }),
              "krnqb: wrong usage: --from \"" + text +
                  "\" is not a date; write YYYY-MM-DD, for example 2002-01-31");
  }
}

TEST(ParseProduct, AcceptsTheThreeProducts) {
  EXPECT_EQ(ParseProduct("--product", "ald"), QBKRN_ALD);
  EXPECT_EQ(ParseProduct("--product", "bri"), QBKRN_BRI);
  EXPECT_EQ(ParseProduct("--product", "cor"), QBKRN_COR);
  EXPECT_EQ(LineOf([] { ParseProduct("--product", "ALD"); }),
            "krnqb: wrong usage: --product \"ALD\" is not a product; give ald, bri or cor");
}

TEST(ParseBalances, AcceptsTheFourChoices) {
  EXPECT_EQ(ParseBalances("--balances", "none"), BalImport_None);
  EXPECT_EQ(ParseBalances("--balances", "planned"), BalImport_Planned);
  EXPECT_EQ(ParseBalances("--balances", "actual"), BalImport_Actual);
  EXPECT_EQ(ParseBalances("--balances", "all"), BalImport_All);
  EXPECT_EQ(
      LineOf([] { ParseBalances("--balances", "some"); }),
      "krnqb: wrong usage: --balances \"some\" is not one of the choices; give none, planned, actual or all");
}

TEST(BalancesName, IsTheNameThatParseBalancesAccepts) {
  for (const std::string_view name : {"none", "planned", "actual", "all"}) {
    EXPECT_EQ(BalancesName(ParseBalances("--balances", name)), name);
  }
}

TEST(ParsePercent, AcceptsSixteenBitIntegers) {
  EXPECT_EQ(ParsePercent("--growth-income", "5"), 5);
  EXPECT_EQ(ParsePercent("--growth-income", "-32768"), -32768);
  for (const std::string text : {"", "1.5", "5%", "32768", "five"}) {
    EXPECT_EQ(LineOf([&] { ParsePercent("--growth-income", text); }),
              "krnqb: wrong usage: --growth-income \"" + text +
                  "\" is not a whole percentage; give a number from -32768 to 32767, for example 5");
  }
}

TEST(ParseCount, AcceptsZeroAndPositiveIntegers) {
  EXPECT_EQ(ParseCount("--items", "0"), 0);
  EXPECT_EQ(ParseCount("--items", "9223372036854775807"), 9223372036854775807);
  for (const std::string text : {"", "-1", "1e3", "9223372036854775808"}) {
    EXPECT_EQ(LineOf([&] { ParseCount("--items", text); }),
              "krnqb: wrong usage: --items \"" + text +
                  "\" is not a whole number of 0 or more; give a number such as 1000");
  }
}

TEST(ParseYears, AcceptsARangeOrOneYear) {
  EXPECT_EQ(ParseYears("--years", "2001-2003").first, 2001);
  EXPECT_EQ(ParseYears("--years", "2001-2003").last, 2003);
  EXPECT_EQ(ParseYears("--years", "2002").first, 2002);
  EXPECT_EQ(ParseYears("--years", "2002").last, 2002);
  for (const std::string text : {"", "2001-", "-2002", "2001-2002-2003", "two"}) {
    EXPECT_EQ(
        LineOf([&] { ParseYears("--years", text); }),
        "krnqb: wrong usage: --years \"" + text + "\" is not a range of years; write 2001-2002, or one year");
  }
}

TEST(ParseRequestNumber, AcceptsThirtyTwoBitIntegers) {
  EXPECT_EQ(ParseRequestNumber("N", "310"), 310);
  EXPECT_EQ(ParseRequestNumber("N", "-2147483648"), -2147483647 - 1);
  EXPECT_EQ(
      LineOf([] { ParseRequestNumber("N", "2147483648"); }),
      "krnqb: wrong usage: N \"2147483648\" is not a request number; give a whole number, for example 10");
}

TEST(ParseVersion, AcceptsDigitsAndPoints) {
  EXPECT_EQ(ParseVersion("VERSION", "1.10"), "1.10");
  for (const std::string text : {"", "1.1\"", "two"}) {
    EXPECT_EQ(
        LineOf([&] { ParseVersion("VERSION", text); }),
        "krnqb: wrong usage: VERSION \"" + text + "\" is not a qbXML version; give a version such as 1.1");
  }
}

TEST(ParseProcessorVersion, AcceptsTheThreeVersions) {
  for (const std::string text : {"1.0", "1.1", "2.0"})
    EXPECT_EQ(ParseProcessorVersion("--processor", text), text);
  EXPECT_EQ(LineOf([] { ParseProcessorVersion("--processor", "3.0"); }),
            "krnqb: wrong usage: --processor \"3.0\" is not a supported qbXML version; give 1.0, 1.1 or 2.0");
}

}  // namespace
}  // namespace krnqb::cli
