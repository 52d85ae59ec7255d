#include "files/descriptor.h"

#include <fcntl.h>

namespace krnqb::files {

FileDescriptor FileDescriptor::Open(const std::filesystem::path& file, int flags, mode_t mode) noexcept {
  // The system's call takes its mode as a variable argument.
  return FileDescriptor(
      ::open(file.c_str(), flags | O_CLOEXEC, mode));  // NOLINT(cppcoreguidelines-pro-type-vararg)
}

}  // namespace krnqb::files
