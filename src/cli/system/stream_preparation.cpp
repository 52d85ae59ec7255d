#include "cli/system/stream_preparation.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <initializer_list>

namespace krnqb::cli {
namespace {

bool IsOpen(int descriptor) noexcept {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg)
  return ::fcntl(descriptor, F_GETFD) != -1 || errno != EBADF;
}

// The lowest closed number is the one that the next file gets.
bool OpenInstead(int descriptor) noexcept {
  // The direction in which the stream is not used: using it fails.
  const int flags = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
  return ::open("/dev/null", flags) == descriptor;  // NOLINT(cppcoreguidelines-pro-type-vararg)
}

}  // namespace

bool PrepareStandardStreams() noexcept {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (!IsOpen(descriptor) && !OpenInstead(descriptor)) return false;
  }
  return std::signal(SIGPIPE, SIG_IGN) != SIG_ERR && std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR;
}

}  // namespace krnqb::cli
