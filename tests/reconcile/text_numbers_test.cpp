#include "reconcile/text_numbers.h"

#include <gtest/gtest.h>

#include <string>

namespace krnqb::reconcile {
namespace {

TEST(TextNumbers, NumberTextsInTheOrderOfTheirFirstUse) {
  TextNumbers numbers;
  EXPECT_EQ(numbers.NumberOf("a"), 0U);
  EXPECT_EQ(numbers.NumberOf("b"), 1U);
  EXPECT_EQ(numbers.NumberOf("b"), 1U);
  EXPECT_EQ(numbers.NumberOf("a"), 0U);
  EXPECT_EQ(numbers.NumberOf(""), 2U);
  EXPECT_EQ(numbers.NumberOf("A"), 3U);
  EXPECT_EQ(numbers.TextOf(1), "b");
  EXPECT_EQ(numbers.TextOf(2), "");
}

TEST(TextNumbers, KeepTextsWhoseSourceChanges) {
  TextNumbers numbers;
  std::string text = "one text";
  numbers.NumberOf(text);
  text = "another";
  EXPECT_EQ(numbers.NumberOf(text), 1U);
  EXPECT_EQ(numbers.NumberOf("one text"), 0U);
  EXPECT_EQ(numbers.TextOf(0), "one text");
}

TEST(TextNumbers, AreRightWhateverTheGuess) {
  TextNumbers numbers;
  EXPECT_EQ(numbers.NumberOf("a", 7), 0U);
  EXPECT_EQ(numbers.NumberOf("b", 0), 1U);
  EXPECT_EQ(numbers.NumberOf("a", 0), 0U);
  EXPECT_EQ(numbers.NumberOf("b", 0), 1U);
  EXPECT_EQ(numbers.NumberOf("a", 1), 0U);
  EXPECT_EQ(numbers.NumberOf("c", 1), 2U);
}

TEST(TextNumbers, StayTheSameAmongManyTexts) {
  constexpr std::uint32_t many = 20'000;
  TextNumbers numbers;
  for (std::uint32_t number = 0; number < many; ++number) {
    ASSERT_EQ(numbers.NumberOf("transaction " + std::to_string(number)), number);
  }
  for (std::uint32_t number = 0; number < many; ++number) {
    const std::string text = "transaction " + std::to_string(number);
    ASSERT_EQ(numbers.NumberOf(text), number);
    ASSERT_EQ(numbers.TextOf(number), text);
  }
}

}  // namespace
}  // namespace krnqb::reconcile
