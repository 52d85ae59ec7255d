// A stand-in for the system-information tool: writes its command line and show state into a file beside
// itself.
#include <windows.h>

#include <string>

int wmain() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  STARTUPINFOW window{};
  GetStartupInfoW(&window);
  const std::wstring text =
      GetCommandLineW() + std::wstring(L"\nwindow ") + std::to_wstring(window.wShowWindow) + L'\n';
  HANDLE file = CreateFileW((path + L".txt").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  DWORD written = 0;
  WriteFile(file, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &written, nullptr);
  CloseHandle(file);
  return 0;
}
