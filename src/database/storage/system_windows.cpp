#include "database/storage/system.h"

#include <windows.h>

#include <cerrno>

#include "support/windows_error.h"

namespace krnqb::database {

// The other one of Windows refuses long paths.
const char* SystemFilesName() noexcept {
  return "win32-longpath";
}

int LastSystemError() noexcept {
  return ErrnoOfWindowsError(GetLastError());
}

int AccessError(const std::filesystem::path& file, Use use) noexcept {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return LastSystemError();
  // The attribute of a folder says nothing about its files.
  const bool writeProtected =
      (attributes & FILE_ATTRIBUTE_READONLY) != 0 && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
  if (use == Use::Writing && writeProtected) return EACCES;
  const DWORD access = use == Use::Reading ? FILE_READ_DATA : FILE_WRITE_DATA;
  const HANDLE opened =
      CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return LastSystemError();
  CloseHandle(opened);
  return 0;
}

}  // namespace krnqb::database
