#include "support/windows_error.h"

#include <windows.h>

#include <cerrno>

namespace krnqb {

int ErrnoOfWindowsError(unsigned long error) noexcept {
  switch (error) {
    case ERROR_SUCCESS:
      return 0;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_PATHNAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_INVALID_NAME:
      return ENOENT;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return EEXIST;
    case ERROR_SHARING_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
      return ETXTBSY;
    case ERROR_LOCK_VIOLATION:
    case ERROR_BUSY:
      return EBUSY;
    case ERROR_ACCESS_DENIED:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_CANNOT_MAKE:
    case ERROR_DELETE_PENDING:
      return EACCES;
    case ERROR_PRIVILEGE_NOT_HELD:
      return EPERM;
    case ERROR_WRITE_PROTECT:
      return EROFS;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return ENOSPC;
    case ERROR_FILE_TOO_LARGE:
      return EFBIG;
    case ERROR_DIRECTORY:
      return ENOTDIR;
    case ERROR_DIR_NOT_EMPTY:
      return ENOTEMPTY;
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_BUFFER_OVERFLOW:
      return ENAMETOOLONG;
    case ERROR_TOO_MANY_OPEN_FILES:
      return EMFILE;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
    case ERROR_NO_SYSTEM_RESOURCES:
      return ENOMEM;
    case ERROR_BROKEN_PIPE:
    case ERROR_NO_DATA:
    case ERROR_PIPE_NOT_CONNECTED:
      return EPIPE;
    case ERROR_INVALID_HANDLE:
      return EBADF;
    case ERROR_INVALID_PARAMETER:
      return EINVAL;
    default:
      return EIO;
  }
}

}  // namespace krnqb
