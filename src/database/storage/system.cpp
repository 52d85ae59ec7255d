#include "database/storage/system.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace krnqb::database {

const char* SystemFilesName() noexcept {
  return "unix";
}

int LastSystemError() noexcept {
  return errno;
}

int AccessError(const std::filesystem::path& file, Use use) noexcept {
  const int access = use == Use::Reading ? R_OK : W_OK;
  return ::faccessat(AT_FDCWD, file.c_str(), access, AT_EACCESS) == 0 ? 0 : errno;
}

}  // namespace krnqb::database
