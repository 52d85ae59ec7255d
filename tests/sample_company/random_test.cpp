#include "sample_company/random.h"

#include <gtest/gtest.h>

namespace krnqb::sample_company {
namespace {

TEST(SyntheticRandom, MakesTheSameChoicesOnAnyMachine) {
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

}  // namespace
}  // namespace krnqb::sample_company
