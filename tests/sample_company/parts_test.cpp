#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "sample_company/calendar.h"
#include "sample_company/obligations.h"
#include "sample_company/random.h"
#include "sample_company/text.h"

namespace krnqb::sample_company {
namespace {

using std::chrono::days;

Day DayOf(int year, unsigned month, unsigned day) {
  return std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
}

TEST(SyntheticRandom, GivesTheSameChoicesOnAnyMachine) {
  Random random(5489);
  // The engine's first numbers are 14514284786278117030 and 4620546740167642908.
  EXPECT_EQ(random.Below(1000), 786U);
  EXPECT_EQ(random.Below(1000), 250U);
}

TEST(SyntheticRandom, StaysWithinItsBounds) {
  Random random(1);
  for (int attempt = 0; attempt < 1000; ++attempt) {
    EXPECT_EQ(random.Below(1), 0U);
    const std::int64_t between = random.Between(-2, 2);
    EXPECT_TRUE(between >= -2 && between <= 2) << between;
    const std::int64_t around = random.Around(1000);
    EXPECT_TRUE(around >= 400 && around < 2400) << around;
    EXPECT_GE(random.Around(1), 1);
  }
}

TEST(SyntheticCalendar, SpreadsTransactionsToTheLastOne) {
  for (const std::int64_t transactions : {0, 1, 11, 1000, 123'457}) {
    const std::vector<MonthPlan> months = PlanMonths(1999, 2004, transactions);
    ASSERT_EQ(months.size(), 72U);
    EXPECT_EQ(
        std::accumulate(months.begin(), months.end(), std::int64_t{0},
                        [](std::int64_t sum, const MonthPlan& month) { return sum + month.transactions; }),
        transactions);
  }
}

TEST(SyntheticCalendar, KnowsTheDaysOfMonths) {
  const std::vector<MonthPlan> months = PlanMonths(2000, 2001, 100);
  EXPECT_EQ(DayText(months[1].firstDay), "2000-02-01");
  EXPECT_EQ(months[1].days, 29);
  EXPECT_EQ(months[13].days, 28);
  EXPECT_TRUE(months[12].beginsYear);
  EXPECT_FALSE(months[13].beginsYear);
  EXPECT_EQ(UnixTime(months[0].firstDay, 61), 946'684'861);
}

TEST(SyntheticCalendar, RestsOnSundaysAndGoesForwards) {
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

TEST(SyntheticText, WritesAmountsQuantitiesAndIds) {
  ElementText text;
  text.Money("A", -5);
  text.Money("A", 1'234'500);
  text.Quantity("Q", 625);
  text.Quantity("Q", -650);
  text.Quantity("Q", 300);
  text.Id("I", 255, 1'010'334'984);
  EXPECT_EQ(text.Xml(),
            "<A>-0.05</A>\n<A>12345.00</A>\n<Q>6.25</Q>\n<Q>-6.5</Q>\n<Q>3</Q>\n<I>FF-1010334984</I>\n");
  text.Clear();
  text.Times(1'010'334'984);
  EXPECT_EQ(
      text.Xml(),
      "<TimeCreated>2002-01-06T16:36:24</TimeCreated>\n<TimeModified>2002-01-06T16:36:24</TimeModified>\n"
      "<EditSequence>1010334984</EditSequence>\n");
  EXPECT_EQ(ReferenceLines("10000-1", "Café & Co."),
            "<ListID>10000-1</ListID>\n<FullName>Caf&#233; &amp; Co.</FullName>\n");
}

TEST(SyntheticObligations, PromiseOnlyWhatThereIsRoomAndTimeFor) {
  const Obligation bill{ObligationKind::PayVendor, 3};
  const Obligation invoice{ObligationKind::CollectFromCustomer, 3};
  Obligations obligations(DayOf(2002, 12, 31));
  EXPECT_FALSE(obligations.CanPromise(bill, DayOf(2002, 6, 1))) << "there is no room yet";
  obligations.LeaveRoom(1);
  EXPECT_TRUE(obligations.CanPromise(bill, DayOf(2002, 6, 1)));
  EXPECT_FALSE(obligations.CanPromise(bill, DayOf(2002, 12, 25))) << "too close to the end";
  obligations.Promise(bill, DayOf(2002, 6, 1), {100, 1, {}, {}, 0});
  EXPECT_TRUE(obligations.CanPromise(bill, DayOf(2002, 7, 1))) << "one payment settles both";
  EXPECT_FALSE(obligations.CanPromise(invoice, DayOf(2002, 7, 1)));
}

TEST(SyntheticObligations, SettleAllThatIsOpenWithAParty) {
  const Obligation first{ObligationKind::PayVendor, 3};
  const Obligation second{ObligationKind::PayVendor, 1};
  Obligations obligations(DayOf(2002, 12, 31));
  obligations.Promise(first, DayOf(2002, 6, 1), {100, 1, {}, {}, 0});
  obligations.Promise(second, DayOf(2002, 5, 1), {300, 2, {}, {}, 0});
  obligations.Promise(first, DayOf(2002, 8, 1), {200, 3, {}, {}, 0});
  EXPECT_EQ(obligations.Count(), 2);
  EXPECT_EQ(obligations.DueBy(DayOf(2002, 4, 30)), std::nullopt);
  EXPECT_EQ(obligations.DueBy(DayOf(2002, 7, 1)), second);
  EXPECT_EQ(obligations.Settle(second).size(), 1U);
  EXPECT_EQ(obligations.DueBy(DayOf(2002, 7, 1)), first);
  const std::vector<OpenItem> bills = obligations.Settle(first);
  ASSERT_EQ(bills.size(), 2U);
  EXPECT_EQ(bills[1].amount, 200);
  EXPECT_EQ(obligations.Count(), 0);
  EXPECT_TRUE(obligations.Settle(first).empty());
}

}  // namespace
}  // namespace krnqb::sample_company
