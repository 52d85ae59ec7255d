#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>

// The suite checks for the last line: without it the program did not finish.
int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
  const int failed = RUN_ALL_TESTS();
  CoUninitialize();
  if (failed == 0) std::puts("end of the repetitions");
  return failed;
}
