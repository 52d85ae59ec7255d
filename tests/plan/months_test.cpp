#include "plan/months.h"

#include <gtest/gtest.h>

#include "error_number.h"

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

TEST(MonthsOfActivity, IsTheHighestMonthOfAnyRecordInEitherOrder) {
  EXPECT_EQ(Activity(Records({{4, 1}, {9, 1}})), 9);
  EXPECT_EQ(Activity(Records({{9, 1}, {4, 1}})), 9);
}

TEST(MonthsOfActivity, CountsANegativeAmount) {
  EXPECT_EQ(Activity(Records({{12, -0.01}})), 12);
}

TEST(MonthsOfActivity, DoesNotCountTheTwoFurtherSlots) {
  const SubtotalCollection records = Records({{13, 5}, {14, 5}});
  EXPECT_EQ(Activity(records), 0);
  EXPECT_EQ(records.AtPosition(1).Total(), 5);
}

TEST(MonthsOfActivity, OfNothingIsZero) {
  EXPECT_EQ(MonthsOfActivity(nullptr), 0);
  EXPECT_EQ(Activity({}), 0);
  EXPECT_EQ(Activity(Records({{3, 0}})), 0);
}

TEST(StepMonth, BeginsAtTheStartGiven) {
  PeriodFields period;
  std::int16_t month = 0;
  std::int16_t year = 0;
  StepMonth(1, month, year, 11, 2002, period);
  EXPECT_EQ(month, 11);
  EXPECT_EQ(year, 2002);
}

TEST(StepMonth, BeginsAtThePlansStartWhereNoneIsGiven) {
  PeriodFields period{.krnStartingMonth = 4, .krnStartingYear = 0, .startingMonth = 0, .startingYear = 2001};
  std::int16_t month = 0;
  std::int16_t year = 0;
  StepMonth(1, month, year, 0, 0, period);
  EXPECT_EQ(month, 4);
  EXPECT_EQ(year, 2001);
  EXPECT_EQ(period.krnStartingYear, 2001);
}

TEST(StepMonth, GoesFromDecemberIntoJanuaryOfTheNextYear) {
  PeriodFields period;
  std::int16_t month = 12;
  std::int16_t year = 2002;
  StepMonth(2, month, year, 0, 0, period);
  EXPECT_EQ(month, 1);
  EXPECT_EQ(year, 2003);
  StepMonth(3, month, year, 0, 0, period);
  EXPECT_EQ(month, 2);
  EXPECT_EQ(year, 2003);
}

TEST(StepMonth, OverflowsBeyondSixteenBits) {
  PeriodFields period;
  std::int16_t month = 12;
  std::int16_t year = 32767;
  EXPECT_EQ(tests::NumberThrownBy([&] { StepMonth(2, month, year, 0, 0, period); }), 6);
}

}  // namespace
}  // namespace krnqb
