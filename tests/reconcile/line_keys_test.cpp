#include "reconcile/line_keys.h"

#include <gtest/gtest.h>

#include <string>

namespace krnqb::reconcile {
namespace {

TEST(LineKeys, NumberLinesInTheOrderOfTheirFirstUse) {
  LineKeys keys;
  EXPECT_EQ(keys.NumberOf(0, "a"), 0U);
  EXPECT_EQ(keys.NumberOf(0, "a"), 0U);
  EXPECT_EQ(keys.NumberOf(0, "b"), 1U);
  EXPECT_EQ(keys.NumberOf(7, "a"), 2U);
  EXPECT_EQ(keys.NumberOf(3, "b"), 3U);
  EXPECT_EQ(keys.NumberOf(0, "b"), 1U);
  EXPECT_EQ(keys.NumberOf(7, "a"), 2U);
  EXPECT_EQ(keys.NumberOf(0, "A"), 4U);
  EXPECT_EQ(keys.NumberOf(0, "A"), 4U);
}

TEST(LineKeys, NumberTheLinesWithoutIdOfATransactionAlike) {
  LineKeys keys;
  EXPECT_EQ(keys.NumberOf(1, ""), 0U);
  EXPECT_EQ(keys.NumberOf(1, "a"), 1U);
  EXPECT_EQ(keys.NumberOf(1, ""), 0U);
  EXPECT_EQ(keys.NumberOf(2, ""), 2U);
}

TEST(LineKeys, KeepIdsWhoseSourceChanges) {
  LineKeys keys;
  std::string id = "one id";
  keys.NumberOf(0, id);
  id = "another";
  EXPECT_EQ(keys.NumberOf(0, id), 1U);
  EXPECT_EQ(keys.NumberOf(0, "one id"), 0U);
}

TEST(LineKeys, StayTheSameInTransactionsOfAnyLengthAndInAnyOrder) {
  constexpr std::uint32_t transactions = 40;  // each has one line more than its number
  const auto firstOf = [](std::uint32_t transaction) { return transaction * (transaction + 1) / 2; };
  LineKeys keys;
  for (std::uint32_t transaction = 0; transaction < transactions; ++transaction) {
    for (std::uint32_t line = 0; line <= transaction; ++line) {
      ASSERT_EQ(keys.NumberOf(transaction, std::to_string(line)), firstOf(transaction) + line);
    }
  }
  for (std::uint32_t transaction = transactions; transaction-- > 0;) {
    for (std::uint32_t line = 0; line <= transaction; ++line) {
      ASSERT_EQ(keys.NumberOf(transaction, std::to_string(line)), firstOf(transaction) + line);
    }
    for (std::uint32_t line = transaction + 1; line-- > 0;) {
      ASSERT_EQ(keys.NumberOf(transaction, std::to_string(line)), firstOf(transaction) + line);
    }
  }
  EXPECT_EQ(keys.NumberOf(transactions - 1, "new"), firstOf(transactions));
}

}  // namespace
}  // namespace krnqb::reconcile
