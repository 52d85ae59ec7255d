#include "files/output_file.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include "krnqb/error.h"

namespace krnqb::files {
namespace {

namespace fs = std::filesystem;

bool IsPipe(const fs::path& file) {
  std::error_code unknown;
  return fs::is_fifo(file, unknown);
}

[[noreturn]] void Fail(const fs::path& file, std::string_view reason) {
  throw Error(error_number::unspecified, fmt::format("{}: {}", file.string(), reason));
}

FileDescriptor Open(const fs::path& file, const InterruptQuery& interrupted, FileOperations& operations) {
  FileDescriptor opened;
  for (;;) {
    const std::error_code failure = operations.OpenForWriting(file, opened);
    if (!failure) break;
    const bool unread = failure == std::errc::no_such_device_or_address && IsPipe(file);
    if (failure == std::errc::interrupted || unread) {
      WaitBriefly(interrupted);
    } else {
      Fail(file, failure.message());
    }
  }
  struct stat status {};
  if (::fstat(opened.Number(), &status) == 0 && S_ISBLK(status.st_mode)) Fail(file, "it is a disk");
  return opened;
}

}  // namespace

OutputFile::OutputFile(const fs::path& file, const InterruptQuery& interrupted, FileOperations& operations)
    : operations_(operations),
      file_(Open(file, interrupted, operations)),
      buffer_(file_, interrupted, operations),
      stream_(&buffer_) {}

std::error_code OutputFile::Finish() {
  stream_.flush();
  const std::error_code closing = operations_.Close(file_);
  return buffer_.Failure() ? buffer_.Failure() : closing;
}

}  // namespace krnqb::files
