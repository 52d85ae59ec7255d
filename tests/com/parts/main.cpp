#include <gtest/gtest.h>

#include <cstdio>

// The last line is for whoever runs this: without it the program did not come to its end.
int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  const int failed = RUN_ALL_TESTS();
  if (failed == 0) std::puts("end of the parts");
  return failed;
}
