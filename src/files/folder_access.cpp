#include "files/folder_access.h"

#include <fcntl.h>
#include <unistd.h>

#include "files/fault.h"

namespace krnqb::files {

std::error_code CheckFolderWritable(const std::filesystem::path& folder) noexcept {
  if (::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0) return {};
  return LastSystemError();
}

}  // namespace krnqb::files
