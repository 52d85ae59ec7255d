#include "files/output_file.h"

#include <fmt/format.h>

#include "files/fault.h"
#include "files/status.h"
#include "krnqb/error.h"
#include "support/path_text.h"

namespace krnqb::files {
namespace {

namespace fs = std::filesystem;

bool IsPipe(const fs::path& file) {
  std::error_code unknown;
  return fs::is_fifo(file, unknown);
}

[[noreturn]] void Fail(const fs::path& file, std::string_view reason) {
  throw Error(error_number::unspecified, fmt::format("{}: {}", TextOfPath(file), reason));
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
      Fail(file, ReasonText(failure));
    }
  }
  FileStatus status;
  if (!StatusOf(opened.Number(), status) && status.type == FileType::BlockDevice) Fail(file, "it is a disk");
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
