#include "setup/environment.h"

#include <windows.h>

#include <string>

#include "com/values/error_mapping.h"
#include "setup/search_path.h"
#include "support/windows/registry_key.h"

namespace krnqb::setup {
namespace {

constexpr const wchar_t* valueName = L"Path";

void Check(LSTATUS status) {
  if (status != ERROR_SUCCESS) throw com::SystemError(static_cast<DWORD>(status));
}

const wchar_t* EnvironmentKey(RegistryHive hive) {
  return hive == RegistryHive::LocalMachine
             ? L"SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment"
             : L"Environment";
}

// The value as it is stored, so that everything except the folders stays.
struct StoredPath {
  ProgramPath path;
  DWORD type = REG_EXPAND_SZ;
  std::wstring ending = std::wstring(1, L'\0');  // usually one NUL
};

StoredPath Read(HKEY key) {
  StoredPath stored;
  DWORD size = 0;
  const LSTATUS status = RegQueryValueExW(key, valueName, nullptr, &stored.type, nullptr, &size);
  if (status == ERROR_FILE_NOT_FOUND) return {};
  Check(status);
  if ((stored.type != REG_SZ && stored.type != REG_EXPAND_SZ) || size % sizeof(wchar_t) != 0) {
    throw com::SystemError(ERROR_INVALID_DATA);
  }
  std::wstring text(size / sizeof(wchar_t), L'\0');
  Check(RegQueryValueExW(key, valueName, nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()), &size));
  const std::size_t end = text.find_last_not_of(L'\0') + 1;
  stored.ending = text.substr(end);
  text.resize(end);
  stored.path = text;
  return stored;
}

void Write(HKEY key, const StoredPath& stored) {
  if (!stored.path) {
    Check(RegDeleteValueW(key, valueName));
    return;
  }
  const std::wstring text = *stored.path + stored.ending;
  Check(RegSetValueExW(key, valueName, 0, stored.type, reinterpret_cast<const BYTE*>(text.data()),
                       static_cast<DWORD>(text.size() * sizeof(wchar_t))));
}

// A program that does not answer has to find out for itself.
void NotifyPrograms() {
  constexpr UINT longestWait = 2000;  // milliseconds for each window
  DWORD_PTR result = 0;
  SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"Environment"),
                      SMTO_ABORTIFHUNG, longestWait, &result);
}

template <typename Change>
bool ChangePath(RegistryHive hive, Change change) {
  RegistryKey key;
  Check(RegCreateKeyExW(RootOf(hive), EnvironmentKey(hive), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_QUERY_VALUE | KEY_SET_VALUE, nullptr, key.Receive(), nullptr));
  StoredPath stored = Read(key.get());
  if (!change(stored.path)) return false;
  Write(key.get(), stored);
  NotifyPrograms();
  return true;
}

}  // namespace

bool AddToSearchPath(RegistryHive hive, std::wstring_view folder) {
  return ChangePath(hive, [folder](ProgramPath& path) { return AddFolder(path, folder); });
}

bool RemoveFromSearchPath(RegistryHive hive, std::wstring_view folder) {
  return ChangePath(hive, [folder](ProgramPath& path) { return RemoveFolder(path, folder); });
}

}  // namespace krnqb::setup
