#include "sample_company/calendar.h"

#include <gtest/gtest.h>

#include <numeric>

namespace krnqb::sample_company {
namespace {

using std::chrono::days;

TEST(SyntheticCalendar, DistributesAllTransactions) {
  for (const std::int64_t transactions : {0, 1, 11, 1000, 123'457}) {
    const std::vector<MonthPlan> months = PlanMonths(1999, 2004, transactions);
    ASSERT_EQ(months.size(), 72U);
    EXPECT_EQ(
        std::accumulate(months.begin(), months.end(), std::int64_t{0},
                        [](std::int64_t sum, const MonthPlan& month) { return sum + month.transactions; }),
        transactions);
  }
}

TEST(SyntheticCalendar, HasTheDaysOfMonths) {
  const std::vector<MonthPlan> months = PlanMonths(2000, 2001, 100);
  EXPECT_EQ(DayText(months[1].firstDay), "2000-02-01");
  EXPECT_EQ(months[1].days, 29);
  EXPECT_EQ(months[13].days, 28);
  EXPECT_TRUE(months[12].beginsYear);
  EXPECT_FALSE(months[13].beginsYear);
  EXPECT_EQ(UnixTime(months[0].firstDay, 61), 946'684'861);
}

TEST(SyntheticCalendar, SkipsSundaysAndIsInOrder) {
  for (const MonthPlan& month : PlanMonths(2001, 2002, 5'000)) {
    Day last = month.firstDay;
    for (std::int64_t transaction = 0; transaction < month.transactions; ++transaction) {
      const Day day = month.DayOf(transaction);
      EXPECT_NE(std::chrono::weekday(day), std::chrono::Sunday) << DayText(day);
      EXPECT_GE(day, last);
      EXPECT_LT(day, month.firstDay + days(month.days)) << DayText(day);
      last = day;
    }
  }
}

}  // namespace
}  // namespace krnqb::sample_company
