#include "files/reading.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "files/descriptor.h"
#include "files/fault.h"

namespace krnqb::files {
namespace {

FileStamp StampFrom(const struct stat& status) noexcept {
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

}  // namespace

FileContents ReadFile(const std::filesystem::path& file, std::string_view failure) {
  // O_NONBLOCK: opening a pipe would otherwise block forever.
  const FileDescriptor opened = FileDescriptor::Open(file, O_RDONLY | O_NONBLOCK);
  struct stat status {};
  if (!opened || ::fstat(opened.Number(), &status) != 0) throw FileError(failure, file, LastSystemError());
  if (S_ISDIR(status.st_mode))
    throw FileError(failure, file, std::make_error_code(std::errc::is_a_directory));
  if (!S_ISREG(status.st_mode))
    throw FileError(failure, file, std::make_error_code(std::errc::invalid_argument));

  FileContents contents{{}, StampFrom(status)};
  contents.bytes.reserve(static_cast<std::size_t>(status.st_size));
  std::array<char, 65536> part{};
  for (;;) {
    const ssize_t length = ::read(opened.Number(), part.data(), part.size());
    if (length == 0) return contents;
    if (length > 0) contents.bytes.append(part.data(), static_cast<std::size_t>(length));
    if (length < 0 && errno != EINTR) throw FileError(failure, file, LastSystemError());
  }
}

std::optional<FileStamp> StampOf(const std::filesystem::path& file) noexcept {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) return std::nullopt;
  return StampFrom(status);
}

}  // namespace krnqb::files
