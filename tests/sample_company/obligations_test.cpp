#include "sample_company/obligations.h"

#include <gtest/gtest.h>

namespace krnqb::sample_company {
namespace {

Day DayOf(int year, unsigned month, unsigned day) {
  return std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
}

TEST(SyntheticObligations, NeedRoomAndTime) {
  const Obligation bill{ObligationKind::PayVendor, 3};
  const Obligation invoice{ObligationKind::CollectFromCustomer, 3};
  Obligations obligations(DayOf(2002, 12, 31));
  EXPECT_FALSE(obligations.CanPromise(bill, DayOf(2002, 6, 1))) << "no room yet";
  obligations.LeaveRoom(1);
  EXPECT_TRUE(obligations.CanPromise(bill, DayOf(2002, 6, 1)));
  EXPECT_FALSE(obligations.CanPromise(bill, DayOf(2002, 12, 25))) << "too close to the end";
  obligations.Promise(bill, DayOf(2002, 6, 1), {100, 1, {}, {}, 0});
  EXPECT_TRUE(obligations.CanPromise(bill, DayOf(2002, 7, 1))) << "one payment settles both";
  EXPECT_FALSE(obligations.CanPromise(invoice, DayOf(2002, 7, 1)));
}

TEST(SyntheticObligations, SettleEverythingOpenWithAParty) {
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
