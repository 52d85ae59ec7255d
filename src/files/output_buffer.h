#pragma once

#include <array>
#include <streambuf>
#include <system_error>

#include "files/operations.h"
#include "files/waiting.h"

namespace krnqb::files {

/// Writes to a file, a pipe or a terminal through a std::ostream, and keeps the reason of the first failure.
/// Waits while a pipe is full, unless the user has interrupted the program.
class OutputBuffer : public std::streambuf {
 public:
  /// `file` and `operations` must outlive the buffer, which does not close the file.
  OutputBuffer(const FileDescriptor& file, InterruptQuery interrupted, FileOperations& operations) noexcept;
  ~OutputBuffer() override;
  OutputBuffer(const OutputBuffer&) = delete;
  OutputBuffer& operator=(const OutputBuffer&) = delete;

  /// Returns why writing failed for the first time; after that, nothing more is written.
  std::error_code Failure() const noexcept { return failure_; }

 protected:
  int_type overflow(int_type character) override;
  int sync() override;

 private:
  // A console shows only characters that are written whole.
  enum class Ending { Any, WholeCharacter };

  int Write(Ending ending);
  void WriteReady(std::string_view& contents);

  const FileDescriptor& file_;
  InterruptQuery interrupted_;
  FileOperations& operations_;
  // The system writes this many bytes to a pipe at once: if a pipe accepts any, this does not block.
  std::array<char, 4096> part_{};
  std::error_code failure_;
};

}  // namespace krnqb::files
