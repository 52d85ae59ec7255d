#include "files/descriptor.h"

#include <fcntl.h>
#include <io.h>

#include <cerrno>
#include <cstdint>

#include "files/windows/handle.h"
#include "support/windows_error.h"

namespace krnqb::files {
namespace {

constexpr DWORD sharedFully = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

DWORD AccessFor(int flags) noexcept {
  if ((flags & O_RDWR) != 0) return GENERIC_READ | GENERIC_WRITE;
  return (flags & O_WRONLY) != 0 ? GENERIC_WRITE : GENERIC_READ;
}

DWORD CreationFor(int flags) noexcept {
  const bool creates = (flags & O_CREAT) != 0;
  if (creates && (flags & O_EXCL) != 0) return CREATE_NEW;
  if ((flags & O_TRUNC) != 0) return creates ? CREATE_ALWAYS : TRUNCATE_EXISTING;
  return creates ? OPEN_ALWAYS : OPEN_EXISTING;
}

bool IsFolder(const std::filesystem::path& file) noexcept {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

std::error_code LastWindowsError() noexcept {
  return {ErrnoOfWindowsError(GetLastError()), std::generic_category()};
}

HANDLE HandleOf(int descriptor) noexcept {
  if (descriptor < 0) return INVALID_HANDLE_VALUE;
  const std::intptr_t number = _get_osfhandle(descriptor);
  constexpr std::intptr_t noStream = -2;  // a standard stream of a program that has none
  // NOLINTNEXTLINE(performance-no-int-to-ptr): that is how the C library passes handles
  return number == noStream ? INVALID_HANDLE_VALUE : reinterpret_cast<HANDLE>(number);
}

WindowsHandle OpenToAsk(const std::filesystem::path& file) noexcept {
  // Folders are opened only with this flag.
  return WindowsHandle(CreateFileW(file.c_str(), FILE_READ_ATTRIBUTES, sharedFully, nullptr, OPEN_EXISTING,
                                   FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

FileDescriptor OpenShared(const std::filesystem::path& file, DWORD access, DWORD creation,
                          DWORD flags) noexcept {
  const HANDLE handle = CreateFileW(file.c_str(), access, sharedFully, nullptr, creation, flags, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    errno = error == ERROR_ACCESS_DENIED && IsFolder(file) ? EISDIR : ErrnoOfWindowsError(error);
    return {};
  }
  const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY | _O_NOINHERIT);
  if (descriptor < 0) CloseHandle(handle);
  return FileDescriptor(descriptor);
}

// Permissions are those of the folder.
FileDescriptor FileDescriptor::Open(const std::filesystem::path& file, int flags, mode_t /*mode*/) noexcept {
  return OpenShared(file, AccessFor(flags), CreationFor(flags));
}

// Locked bytes cannot be read or written through other handles, so that a byte behind any contents is locked.
std::error_code FileDescriptor::Lock() const noexcept {
  OVERLAPPED place{};
  place.OffsetHigh = 0x4000'0000;
  constexpr DWORD withoutWaiting = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
  if (LockFileEx(HandleOf(*this), withoutWaiting, 0, 1, 0, &place) != FALSE) return {};
  // An asynchronous lock would be pending: the handle is not, so that this means the same.
  if (GetLastError() == ERROR_IO_PENDING) return {EBUSY, std::generic_category()};
  return LastWindowsError();
}

std::error_code FileDescriptor::Close() noexcept {
  const int closed = std::exchange(descriptor_, -1);
  if (closed < 0 || ::close(closed) == 0) return {};
  return {errno, std::generic_category()};
}

}  // namespace krnqb::files
