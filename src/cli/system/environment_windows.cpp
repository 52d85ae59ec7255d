#include "cli/system/environment.h"

#include <windows.h>

#include "support/windows_text.h"

namespace krnqb::cli {

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const std::wstring wideName = Wide(name);
  std::wstring value(MAX_PATH, L'\0');
  for (;;) {
    SetLastError(ERROR_SUCCESS);
    const auto size = static_cast<DWORD>(value.size());
    // Returns the length that the value needs with its end if there is no room for it.
    const DWORD length = GetEnvironmentVariableW(wideName.c_str(), value.data(), size);
    if (length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
    value.resize(length);
    if (length < size) return Utf8(value);
  }
}

SettingsFolder FolderOfSettings() {
  return {.variable = "APPDATA", .below = {}, .spoken = "%APPDATA%"};
}

}  // namespace krnqb::cli
