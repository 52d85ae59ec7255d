#pragma once

#include <windows.h>

#include <system_error>

#include "files/descriptor.h"

namespace krnqb::files {

/// Returns the error of the last failed function of Windows as a number of errno.
std::error_code LastWindowsError() noexcept;

/// Returns the handle behind a descriptor; INVALID_HANDLE_VALUE if it is closed.
HANDLE HandleOf(int descriptor) noexcept;
inline HANDLE HandleOf(const FileDescriptor& file) noexcept {
  return HandleOf(file.Number());
}

/// Owns a handle.
class WindowsHandle {
 public:
  explicit WindowsHandle(HANDLE handle) noexcept : handle_(handle) {}
  WindowsHandle(const WindowsHandle&) = delete;
  WindowsHandle& operator=(const WindowsHandle&) = delete;
  ~WindowsHandle() {
    if (*this) CloseHandle(handle_);
  }
  explicit operator bool() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const noexcept { return handle_; }

 private:
  HANDLE handle_;
};

/// Opens a file with the access, creation and flags of CreateFileW, and shares it fully. Returns an empty
/// descriptor, with the reason in errno, on failure; the reason is EISDIR for a folder.
FileDescriptor OpenShared(const std::filesystem::path& file, DWORD access, DWORD creation,
                          DWORD flags = FILE_ATTRIBUTE_NORMAL) noexcept;

/// Opens a file or folder to ask about it; other programs may do with it what they want.
WindowsHandle OpenToAsk(const std::filesystem::path& file) noexcept;

}  // namespace krnqb::files
