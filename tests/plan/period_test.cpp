#include "plan/period.h"

#include <gtest/gtest.h>

namespace krnqb {
namespace {

PeriodFields PlanInApril2003ImportInJuly2001() {
  return {.krnStartingMonth = 4, .krnStartingYear = 2003, .startingMonth = 7, .startingYear = 2001};
}

TEST(SettleTwelveMonths, BeginAtTheGivenStart) {
  PeriodFields period;
  const YearMonth start{.year = 2002, .month = 11};
  EXPECT_EQ(SettleTwelveMonths(start, period).First(), start);
}

TEST(SettleTwelveMonths, StoreNoDefaultForAGivenStart) {
  PeriodFields period{.krnStartingMonth = 0, .krnStartingYear = 0, .startingMonth = 7, .startingYear = 2001};
  SettleTwelveMonths({.year = 2002, .month = 11}, period);
  EXPECT_EQ(period.krnStartingMonth, 0);
  EXPECT_EQ(period.krnStartingYear, 0);
}

TEST(SettleTwelveMonths, BeginAtThePlansStartByDefault) {
  PeriodFields period = PlanInApril2003ImportInJuly2001();
  EXPECT_EQ(SettleTwelveMonths({}, period).First(), (YearMonth{.year = 2003, .month = 4}));
}

TEST(SettleTwelveMonths, DefaultMonthAndYearSeparately) {
  PeriodFields period = PlanInApril2003ImportInJuly2001();
  EXPECT_EQ(SettleTwelveMonths({.year = 0, .month = 11}, period).First(),
            (YearMonth{.year = 2003, .month = 11}));
  EXPECT_EQ(SettleTwelveMonths({.year = 1999, .month = 0}, period).First(),
            (YearMonth{.year = 1999, .month = 4}));
}

TEST(SettleTwelveMonths, StoreThePlansDefaultsWithoutAGivenStart) {
  PeriodFields period{.krnStartingMonth = 4, .krnStartingYear = 0, .startingMonth = 0, .startingYear = 2001};
  EXPECT_EQ(SettleTwelveMonths({}, period).First(), (YearMonth{.year = 2001, .month = 4}));
  EXPECT_EQ(period.krnStartingYear, 2001);
  EXPECT_EQ(period.startingMonth, 0);
}

}  // namespace
}  // namespace krnqb
