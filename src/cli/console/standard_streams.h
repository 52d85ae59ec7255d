#pragma once

#include <ostream>

#include "files/descriptor.h"
#include "files/operations.h"
#include "files/output_buffer.h"

namespace krnqb::cli {

/// Prepares the process before it opens anything. Opens /dev/null in place of standard descriptors that are
/// closed, so that no file gets their numbers and is taken for a stream; using such a stream fails, as it
/// does if it is closed. Has writing to a closed pipe, or beyond the limit of a file's size, fail instead of
/// ending the process. Returns false if a descriptor can be neither used nor opened.
bool PrepareStandardStreams() noexcept;

/// Standard output or standard error.
class StandardStream {
 public:
  /// Writes to a descriptor, which stays open.
  explicit StandardStream(int descriptor);
  ~StandardStream();
  StandardStream(const StandardStream&) = delete;
  StandardStream& operator=(const StandardStream&) = delete;

  std::ostream& Stream() noexcept { return stream_; }

  /// Returns whether writing failed because the program that reads the stream has ended.
  bool ReaderHasEnded() const noexcept;

 private:
  files::SystemFileOperations operations_;
  files::FileDescriptor descriptor_;
  files::OutputBuffer buffer_;
  std::ostream stream_;
};

}  // namespace krnqb::cli
