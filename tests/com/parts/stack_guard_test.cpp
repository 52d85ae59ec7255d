#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <string>

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

// Runs another process with the disabled test; returns its exit code.
DWORD ExitCodeOf(const std::wstring& disabledTest) {
  std::array<wchar_t, MAX_PATH> program{};
  GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
  std::wstring command = L'"' + std::wstring(program.data()) +
                         L"\" --gtest_also_run_disabled_tests --gtest_filter=" + disabledTest;
  STARTUPINFOW window{};
  window.cb = sizeof(window);
  PROCESS_INFORMATION started{};
  if (CreateProcessW(program.data(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &window,
                     &started) == FALSE) {
    return 0;
  }
  DWORD code = 0;
  WaitForSingleObject(started.hProcess, INFINITE);
  GetExitCodeProcess(started.hProcess, &code);
  CloseHandle(started.hThread);
  CloseHandle(started.hProcess);
  return code;
}

// Started by the next test in a process of its own, which it ends.
TEST(StackGuard, DISABLED_Overrun) {
  EXPECT_EQ(1, Fill(4 * size));
}

TEST(StackGuard, EndsAProcessThatOverrunsAnArray) {
  EXPECT_EQ(1, Fill(size));
  EXPECT_EQ(STATUS_STACK_BUFFER_OVERRUN, ExitCodeOf(L"StackGuard.DISABLED_Overrun"));
}

}  // namespace
