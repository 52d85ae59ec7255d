#include <gtest/gtest.h>

#include <cstdio>

// The suite checks for the last line: without it the program did not finish.
int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  const int failed = RUN_ALL_TESTS();
  if (failed == 0) std::puts("end of the parts");
  return failed;
}
