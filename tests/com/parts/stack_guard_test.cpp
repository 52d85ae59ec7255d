#include <gtest/gtest.h>
#include <windows.h>

namespace {

constexpr int size = 16;

// Fills an array of its own, which a larger count overruns. The pointer hides the array's size from the
// compiler.
__attribute__((noinline)) int Fill(int count) {
  char bytes[size] = {};
  char* volatile place = bytes;
  for (int index = 0; index < count; ++index) place[index] = 1;
  return place[0];
}

TEST(StackGuard, EndsAProcessThatOverrunsAnArray) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  EXPECT_EQ(1, Fill(size));
  EXPECT_EXIT(Fill(4 * size), testing::ExitedWithCode(static_cast<int>(STATUS_STACK_BUFFER_OVERRUN)), "");
}

}  // namespace
