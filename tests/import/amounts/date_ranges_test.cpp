#include "import/amounts/date_ranges.h"

#include <gtest/gtest.h>

#include "error_number.h"

namespace krnqb {
namespace {

using tests::NumberThrownBy;

std::string Text(const DateRange& range) {
  return range.fromDate + " " + range.toDate;
}

TEST(FiscalYearRange, CoversTwelveMonths) {
  EXPECT_EQ(Text(FiscalYearRange(1, 2002)), "2002-01-01 2002-12-31");
  EXPECT_EQ(Text(FiscalYearRange(4, 2002)), "2002-04-01 2003-03-31");
  EXPECT_EQ(Text(FiscalYearRange(12, 2002)), "2002-12-01 2003-11-30");
}

TEST(FiscalYearRange, EndsOnTheLastDayOfALeapFebruary) {
  EXPECT_EQ(Text(FiscalYearRange(3, 2003)), "2003-03-01 2004-02-29");
  EXPECT_EQ(Text(FiscalYearRange(3, 2002)), "2002-03-01 2003-02-28");
}

TEST(FiscalYearRange, FailsOutsideTheCalendar) {
  EXPECT_EQ(NumberThrownBy([] { FiscalYearRange(0, 2002); }), 0) << "month 0 ends in month 11";
  EXPECT_EQ(NumberThrownBy([] { FiscalYearRange(14, 2002); }), 13);
  EXPECT_EQ(NumberThrownBy([] { FiscalYearRange(1, 0); }), 13);
  EXPECT_EQ(NumberThrownBy([] { FiscalYearRange(2, 32767); }), 6);
}

TEST(MonthRange, CoversOneMonth) {
  EXPECT_EQ(Text(MonthRange(2, 2004)), "2004-02-01 2004-02-29");
  EXPECT_EQ(Text(MonthRange(12, 2002)), "2002-12-01 2002-12-31");
  EXPECT_EQ(NumberThrownBy([] { MonthRange(13, 2002); }), 13);
}

}  // namespace
}  // namespace krnqb
