#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "fakes/test_host.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::NumberThrownBy;

constexpr double largest = std::numeric_limits<double>::max();

std::shared_ptr<cSubtotals> With(std::initializer_list<std::pair<std::int16_t, double>> amounts) {
  auto subtotals = std::make_shared<cSubtotals>();
  for (const auto& [slot, amount] : amounts) subtotals->SubTotal(slot, amount);
  return subtotals;
}

std::int16_t MonthsOf(std::initializer_list<Variant> items) {
  QBDataExchange component{OutsideWorld{}};
  const auto collection = std::make_shared<Collection>();
  for (const Variant& item : items) collection->Add(item);
  return component.MonthsOfActivity(collection);
}

TEST(Subtotals, AreZeroAtTheStart) {
  const cSubtotals subtotals;
  for (std::int16_t slot = 1; slot <= 14; ++slot) EXPECT_EQ(subtotals.SubTotal(slot), 0.0) << slot;
  EXPECT_EQ(subtotals.Total(), 0.0);
  EXPECT_EQ(subtotals.Description(), "");
}

TEST(Subtotals, KeepEachSlotUnrounded) {
  cSubtotals subtotals;
  for (std::int16_t slot = 1; slot <= 14; ++slot) subtotals.SubTotal(slot, slot * -1.001);
  for (std::int16_t slot = 1; slot <= 14; ++slot) EXPECT_EQ(subtotals.SubTotal(slot), slot * -1.001) << slot;
  subtotals.Description("Caf\xC3\xA9");
  EXPECT_EQ(subtotals.Description(), "Caf\xC3\xA9");
}

TEST(Subtotals, ThrowOutsideSlotsOneToFourteen) {
  cSubtotals subtotals;
  for (const int index : {0, -1, 15, 32767, -32768}) {
    const auto slot = static_cast<std::int16_t>(index);
    EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(subtotals.SubTotal(slot)); }), 9) << index;
    EXPECT_EQ(NumberThrownBy([&] { subtotals.SubTotal(slot, 1.0); }), 9) << index;
    EXPECT_EQ(NumberThrownBy([&] { subtotals.AddToSubTotal(slot, 1.0); }), 9) << index;
  }
  EXPECT_EQ(subtotals.Total(), 0.0);
}

TEST(SubtotalsTotal, AddsAllFourteenSlots) {
  cSubtotals subtotals;
  for (std::int16_t slot = 1; slot <= 14; ++slot) subtotals.SubTotal(slot, slot);
  EXPECT_EQ(subtotals.Total(), 105.0);
}

TEST(SubtotalsTotal, AddsInSlotOrder) {
  EXPECT_EQ(With({{1, 1e16}, {2, 1.0}, {3, -1e16}})->Total(), 0.0);
  EXPECT_EQ(With({{1, 1e16}, {2, -1e16}, {3, 1.0}})->Total(), 1.0);
}

TEST(SubtotalsTotal, IsZeroWhenAPartialSumOverflows) {
  EXPECT_EQ(With({{1, largest}, {2, largest}})->Total(), 0.0);
  EXPECT_EQ(With({{1, -largest}, {2, -largest}})->Total(), 0.0);
  EXPECT_EQ(With({{1, largest}, {2, largest}, {3, -largest}})->Total(), 0.0);
  EXPECT_EQ(With({{1, largest}, {2, -largest}, {3, 5.0}})->Total(), 5.0);
}

TEST(SubtotalsAddition, ThrowsForASumOutOfRangeAndKeepsTheSlot) {
  cSubtotals subtotals;
  subtotals.AddToSubTotal(3, 1.5);
  subtotals.AddToSubTotal(3, 2.0);
  EXPECT_EQ(subtotals.SubTotal(3), 3.5);
  subtotals.SubTotal(4, largest);
  EXPECT_EQ(NumberThrownBy([&] { subtotals.AddToSubTotal(4, largest); }), 6);
  EXPECT_EQ(subtotals.SubTotal(4), largest);
}

TEST(MonthsOfActivity, IsTheHighestMonthOfAnyRecordInEitherOrder) {
  EXPECT_EQ(MonthsOf({Variant(With({{4, 1.0}})), Variant(With({{9, 1.0}}))}), 9);
  EXPECT_EQ(MonthsOf({Variant(With({{9, 1.0}})), Variant(With({{4, 1.0}}))}), 9);
  EXPECT_EQ(MonthsOf({Variant(With({{1, 1.0}, {12, 0.01}})), Variant(With({}))}), 12);
}

TEST(MonthsOfActivity, CountsNegativeAmounts) {
  EXPECT_EQ(MonthsOf({Variant(With({{5, -0.01}}))}), 5);
}

TEST(MonthsOfActivity, IgnoresTheTwoExtraSlots) {
  EXPECT_EQ(MonthsOf({Variant(With({{13, 7.0}}))}), 0);
  EXPECT_EQ(MonthsOf({Variant(With({{14, 7.0}}))}), 0);
  EXPECT_EQ(With({{13, 7.0}})->Total(), 7.0);
  EXPECT_EQ(With({{14, 7.0}})->Total(), 7.0);
  EXPECT_EQ(MonthsOf({Variant(With({{3, 1.0}, {13, 7.0}}))}), 3);
}

TEST(MonthsOfActivity, IsZeroWithoutAmountsRecordsOrCollection) {
  EXPECT_EQ(MonthsOf({}), 0);
  EXPECT_EQ(MonthsOf({Variant(With({}))}), 0);
  EXPECT_EQ(MonthsOf({Variant(With({{6, 2.0}, {6, 0.0}}))}), 0);
  QBDataExchange component{OutsideWorld{}};
  EXPECT_EQ(component.MonthsOfActivity(nullptr), 0);
}

TEST(MonthsOfActivity, IsZeroWhenAnItemHasNoSubtotals) {
  const Variant strangers[] = {Variant("text"),
                               Variant(),
                               Variant(std::int16_t{3}),
                               Variant(ObjectReference()),
                               Variant(std::make_shared<Collection>()),
                               Variant(XmlElement::Parse("<a/>"))};
  for (const Variant& stranger : strangers) {
    EXPECT_EQ(MonthsOf({stranger}), 0);
    EXPECT_EQ(MonthsOf({Variant(With({{4, 1.0}})), stranger}), 0) << "earlier results are discarded";
  }
}

}  // namespace
}  // namespace krnqb
