#include <cerrno>

#include "files/fault.h"

namespace krnqb::files {

std::error_code LastSystemError() noexcept {
  return {errno, std::generic_category()};
}

std::string ReasonText(std::error_code reason) {
  return reason.message();
}

std::string_view FileAdvice(std::error_code reason) noexcept {
  switch (reason.value()) {
    case ENOSPC:
    case EDQUOT:
      return "free some disk space and try again";
    case EACCES:
    case EPERM:
      return "make sure that you have permission to use the file and its folder";
    case EROFS:
      return "copy the plan to a disk that is not read-only";
    case ENOENT:
    case ENOTDIR:
      return "check the path";
    case EISDIR:
      return "give the path of a file, not of a folder";
    case ELOOP:
      return "check the symbolic links in the path";
    case EFBIG:
      return "raise the limit of the size of files (ulimit -f) and try again";
    case EPIPE:
      return "let the program that reads it read to the end";
    case ENAMETOOLONG:
      return "give the file a shorter name";
    case EBUSY:
      return "wait until the other program has finished and try again";
    default:
      return "check the disk and try again";
  }
}

}  // namespace krnqb::files
