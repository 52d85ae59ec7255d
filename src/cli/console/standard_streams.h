#pragma once

#include <ostream>

#include "files/descriptor.h"
#include "files/operations.h"
#include "files/output_buffer.h"

namespace krnqb::cli {

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
