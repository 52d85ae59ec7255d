#include "krnqb/subtotals.h"

#include <gtest/gtest.h>

#include <limits>

#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::NumberThrownBy;

TEST(Subtotals, BeginAtZeroInFourteenSlots) {
  const cSubtotals record;
  EXPECT_EQ(record.Description(), "");
  for (std::int16_t slot = 1; slot <= 14; ++slot) EXPECT_EQ(record.SubTotal(slot), 0);
  EXPECT_EQ(record.Total(), 0);
}

TEST(Subtotals, ThrowOutsideTheirSlots) {
  cSubtotals record;
  for (const auto slot : std::initializer_list<std::int16_t>{0, 15, -1}) {
    EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(record.SubTotal(slot)); }), 9) << slot;
    EXPECT_EQ(NumberThrownBy([&] { record.SubTotal(slot, 1); }), 9) << slot;
    EXPECT_EQ(NumberThrownBy([&] { record.AddToSubTotal(slot, 1); }), 9) << slot;
  }
}

TEST(Subtotals, TotalIncludesTheTwoExtraSlots) {
  cSubtotals record("Rent");
  record.SubTotal(1, 1.5);
  record.SubTotal(13, 10);
  record.SubTotal(14, -0.5);
  EXPECT_EQ(record.Total(), 11);
}

TEST(Subtotals, TotalOutOfRangeIsZero) {
  cSubtotals record;
  record.SubTotal(1, std::numeric_limits<double>::max());
  record.SubTotal(2, std::numeric_limits<double>::max());
  EXPECT_EQ(record.Total(), 0);
  record.SubTotal(3, -std::numeric_limits<double>::max());
  EXPECT_EQ(record.Total(), 0);
  record.SubTotal(1, std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(record.Total(), 0);
}

TEST(Subtotals, KeepTheSlotIfASumOverflows) {
  cSubtotals record;
  record.SubTotal(1, std::numeric_limits<double>::max());
  EXPECT_EQ(NumberThrownBy([&] { record.AddToSubTotal(1, std::numeric_limits<double>::max()); }), 6);
  EXPECT_EQ(record.SubTotal(1), std::numeric_limits<double>::max());
}

}  // namespace
}  // namespace krnqb
