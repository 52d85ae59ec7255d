#include "import/amounts/date_ranges.h"

#include <gtest/gtest.h>

#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::NumberThrownBy;

TwelveMonths YearFrom(std::int16_t month, std::int16_t year) {
  return TwelveMonths({.year = year, .month = month});
}

std::string Text(const DateRange& range) {
  return range.fromDate + " " + range.toDate;
}

TEST(FiscalYearRange, CoversTwelveMonths) {
  EXPECT_EQ(Text(FiscalYearRange(YearFrom(1, 2002))), "2002-01-01 2002-12-31");
  EXPECT_EQ(Text(FiscalYearRange(YearFrom(4, 2002))), "2002-04-01 2003-03-31");
  EXPECT_EQ(Text(FiscalYearRange(YearFrom(12, 2002))), "2002-12-01 2003-11-30");
}

TEST(FiscalYearRange, EndsOnTheLastDayOfALeapFebruary) {
  EXPECT_EQ(Text(FiscalYearRange(YearFrom(3, 2003))), "2003-03-01 2004-02-29");
  EXPECT_EQ(Text(FiscalYearRange(YearFrom(3, 2002))), "2002-03-01 2003-02-28");
}

TEST(FiscalYearRange, FailsOutsideTheCalendar) {
  EXPECT_EQ(NumberThrownBy([] { FiscalYearRange(YearFrom(0, 2002)); }), 0) << "month 0 ends in month 11";
  EXPECT_EQ(Text(FiscalYearRange(YearFrom(13, 2002))), "2002-13-01 2003-12-31");
  EXPECT_EQ(NumberThrownBy([] { FiscalYearRange(YearFrom(14, 2002)); }), 13);
  EXPECT_EQ(NumberThrownBy([] { FiscalYearRange(YearFrom(1, 9999)); }), 13);
  EXPECT_EQ(NumberThrownBy([] { FiscalYearRange(YearFrom(1, 0)); }), 13);
  EXPECT_EQ(NumberThrownBy([] { FiscalYearRange(YearFrom(2, 32767)); }), 6);
}

TEST(MonthRange, CoversOneMonth) {
  EXPECT_EQ(Text(MonthRange({.year = 2004, .month = 2})), "2004-02-01 2004-02-29");
  EXPECT_EQ(Text(MonthRange({.year = 2002, .month = 12})), "2002-12-01 2002-12-31");
  EXPECT_EQ(NumberThrownBy([] { MonthRange({.year = 2002, .month = 13}); }), 13);
  EXPECT_EQ(NumberThrownBy([] { MonthRange({.year = 9999, .month = 12}); }), 13);
}

}  // namespace
}  // namespace krnqb
