#include "files/descriptor.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace krnqb::files {

FileDescriptor FileDescriptor::Open(const std::filesystem::path& file, int flags, mode_t mode) noexcept {
  // open(2) takes the mode as a variadic argument.
  return FileDescriptor(
      ::open(file.c_str(), flags | O_CLOEXEC, mode));  // NOLINT(cppcoreguidelines-pro-type-vararg)
}

std::error_code FileDescriptor::Lock() const noexcept {
  if (::flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return {};
  return {errno == EWOULDBLOCK ? EBUSY : errno, std::generic_category()};
}

std::error_code FileDescriptor::Close() noexcept {
  const int closed = std::exchange(descriptor_, -1);
  if (closed < 0 || ::close(closed) == 0) return {};
  return {errno, std::generic_category()};
}

}  // namespace krnqb::files
