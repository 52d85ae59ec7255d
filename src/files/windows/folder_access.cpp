#include "files/folder_access.h"

#include "files/windows/handle.h"

namespace krnqb::files {

std::error_code CheckFolderWritable(const std::filesystem::path& folder) noexcept {
  constexpr DWORD sharedFully = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  // Folders are opened only with this flag.
  const HANDLE handle = CreateFileW(folder.c_str(), FILE_ADD_FILE, sharedFully, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return LastWindowsError();
  CloseHandle(handle);
  return {};
}

}  // namespace krnqb::files
