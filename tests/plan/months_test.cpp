#include "plan/months.h"

#include <gtest/gtest.h>

namespace krnqb {
namespace {

SubtotalCollection Records(std::initializer_list<std::pair<std::int16_t, double>> amounts) {
  SubtotalCollection records;
  for (const auto& [slot, amount] : amounts) {
    cSubtotals record;
    record.SubTotal(slot, amount);
    records.Add(record);
  }
  return records;
}

std::int16_t Activity(const SubtotalCollection& records) {
  return MonthsOfActivity(&records);
}

TEST(ActivityScan, IsTheHighestMonthOfAnyRecordInEitherOrder) {
  EXPECT_EQ(Activity(Records({{4, 1}, {9, 1}})), 9);
  EXPECT_EQ(Activity(Records({{9, 1}, {4, 1}})), 9);
}

TEST(ActivityScan, FindsANegativeAmount) {
  EXPECT_EQ(Activity(Records({{12, -0.01}})), 12);
}

TEST(ActivityScan, IgnoresTheTwoAdditionalSlots) {
  const SubtotalCollection records = Records({{13, 5}, {14, 5}});
  EXPECT_EQ(Activity(records), 0);
  EXPECT_EQ(records.AtPosition(1).Total(), 5);
}

TEST(ActivityScan, IsZeroWithoutAmountsOrRecords) {
  EXPECT_EQ(MonthsOfActivity(nullptr), 0);
  EXPECT_EQ(Activity({}), 0);
  EXPECT_EQ(Activity(Records({{3, 0}})), 0);
}

}  // namespace
}  // namespace krnqb
