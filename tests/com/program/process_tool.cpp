// What a test of krnqb.exe needs another Windows program for:
//
//   process_tool hold FILE MILLISECONDS       opens FILE as a program does that lets nobody replace it
//   process_tool detached PROGRAM ARGUMENT... runs PROGRAM without a console and without standard streams
#include <windows.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace {

constexpr int unusable = 99;

int Hold(const wchar_t* file, const wchar_t* milliseconds) {
  HANDLE held =
      CreateFileW(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (held == INVALID_HANDLE_VALUE) return unusable;
  std::puts("held");
  std::fflush(stdout);
  Sleep(std::stoul(milliseconds));
  CloseHandle(held);
  return 0;
}

// Returns the exit code of the command, which is everything after the word "detached" in this process's own
// command line.
int RunDetached() {
  constexpr std::wstring_view word = L" detached ";
  std::wstring command = GetCommandLineW();
  command.erase(0, command.find(word) + word.size());
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr, nullptr,
                     &start, &process) == FALSE) {
    return unusable;
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = unusable;
  GetExitCodeProcess(process.hProcess, &code);
  return static_cast<int>(code);
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
  const std::wstring_view task = argumentCount > 2 ? arguments[1] : L"";
  if (task == L"hold" && argumentCount == 4) return Hold(arguments[2], arguments[3]);
  return task == L"detached" ? RunDetached() : unusable;
}
