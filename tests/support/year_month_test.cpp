#include "support/year_month.h"

#include <gtest/gtest.h>

#include <ostream>

#include "thrown_error.h"

namespace krnqb {

void PrintTo(const YearMonth& month, std::ostream* output) {
  *output << month.month << "/" << month.year;
}

namespace {

using tests::NumberThrownBy;

TEST(NextMonth, GoesFromDecemberIntoJanuaryOfTheNextYear) {
  EXPECT_EQ(NextMonth({.year = 2002, .month = 11}), (YearMonth{.year = 2002, .month = 12}));
  EXPECT_EQ(NextMonth({.year = 2002, .month = 12}), (YearMonth{.year = 2003, .month = 1}));
}

TEST(NextMonth, AddsOneOutsideTheCalendar) {
  EXPECT_EQ(NextMonth({.year = 2002, .month = 0}), (YearMonth{.year = 2002, .month = 1}));
  EXPECT_EQ(NextMonth({.year = 2002, .month = 13}), (YearMonth{.year = 2002, .month = 14}));
}

TEST(NextMonth, OverflowsBeyondSixteenBits) {
  EXPECT_EQ(NumberThrownBy([] { NextMonth({.year = 32767, .month = 12}); }), 6);
  EXPECT_EQ(NumberThrownBy([] { NextMonth({.year = 2002, .month = 32767}); }), 6);
}

TEST(DaysInMonth, HandlesLeapYearsAndDecember) {
  EXPECT_EQ(DaysInMonth({.year = 2004, .month = 2}), 29);
  EXPECT_EQ(DaysInMonth({.year = 2002, .month = 12}), 31);
  EXPECT_EQ(DaysInMonth({.year = 9999, .month = 11}), 30);
}

TEST(DaysInMonth, ThrowsTypeMismatchIfTheMonthOrTheNextIsOutsideTheCalendar) {
  for (const YearMonth& month : {YearMonth{.year = 9999, .month = 12},
                                 {.year = 2002, .month = 0},
                                 {.year = 2002, .month = 13},
                                 {.year = 99, .month = 12}}) {
    EXPECT_EQ(NumberThrownBy([&] { DaysInMonth(month); }), 13) << month.month << "/" << month.year;
  }
}

TEST(TwelveMonths, AreCountedFromTheFirst) {
  const TwelveMonths months({.year = 2002, .month = 11});
  EXPECT_EQ(months.First(), (YearMonth{.year = 2002, .month = 11}));
  EXPECT_EQ(months.Month(1), months.First());
  EXPECT_EQ(months.Month(2), (YearMonth{.year = 2002, .month = 12}));
  EXPECT_EQ(months.Month(3), (YearMonth{.year = 2003, .month = 1}));
  EXPECT_EQ(months.Month(12), (YearMonth{.year = 2003, .month = 10}));
}

TEST(TwelveMonths, EndInTheTwelfth) {
  for (std::int16_t month = 1; month <= 12; ++month) {
    const TwelveMonths months({.year = 2002, .month = month});
    EXPECT_EQ(months.Last(), months.Month(12));
  }
}

TEST(TwelveMonths, EndElevenMonthsAfterAMonthOutsideTheCalendar) {
  EXPECT_EQ(TwelveMonths({.year = 2002, .month = 0}).Last(), (YearMonth{.year = 2002, .month = 11}));
  EXPECT_EQ(TwelveMonths({.year = 2002, .month = 13}).Last(), (YearMonth{.year = 2003, .month = 12}));
  EXPECT_EQ(TwelveMonths({.year = 2002, .month = 14}).Last(), (YearMonth{.year = 2003, .month = 13}));
}

TEST(TwelveMonths, OverflowBeyondSixteenBits) {
  const TwelveMonths months({.year = 32767, .month = 12});
  EXPECT_EQ(months.Month(1), months.First());
  EXPECT_EQ(NumberThrownBy([&] { months.Month(2); }), 6);
  EXPECT_EQ(NumberThrownBy([&] { months.Last(); }), 6);
  EXPECT_EQ(NumberThrownBy([] { TwelveMonths({.year = 2002, .month = 32757}).Last(); }), 6);
}

}  // namespace
}  // namespace krnqb
