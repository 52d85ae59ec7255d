#include "files/descriptor.h"

#include <fcntl.h>

namespace krnqb::files {

FileDescriptor FileDescriptor::Open(const std::filesystem::path& file, int flags, mode_t mode) noexcept {
  // open(2) takes the mode as a variadic argument.
  return FileDescriptor(
      ::open(file.c_str(), flags | O_CLOEXEC, mode));  // NOLINT(cppcoreguidelines-pro-type-vararg)
}

}  // namespace krnqb::files
