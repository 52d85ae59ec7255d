#include <cerrno>

#include "files/fault.h"

namespace krnqb::files {

std::error_code LastSystemError() noexcept {
  return {errno, std::generic_category()};
}

std::string ReasonText(std::error_code reason) {
  const std::error_condition condition = reason.default_error_condition();
  if (condition == std::errc::text_file_busy) return "another program has the file open";
  if (condition == std::errc::too_many_symbolic_link_levels) return "it is a link";
  return condition.message();
}

std::string_view FileAdvice(std::error_code reason) noexcept {
  switch (reason.default_error_condition().value()) {
    case ENOSPC:
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
    case EFBIG:
      return "use a disk on which files may be larger";
    case EPIPE:
      return "let the program that reads it read to the end";
    case ENAMETOOLONG:
      return "give the file a shorter name";
    case ETXTBSY:
      return "close it there and try again";
    case EBUSY:
      return "wait until the other program has finished and try again";
    default:
      return "check the disk and try again";
  }
}

}  // namespace krnqb::files
