#pragma once

#include <filesystem>
#include <ostream>
#include <system_error>

#include "files/operations.h"
#include "files/output_buffer.h"
#include "files/waiting.h"

namespace krnqb::files {

/// A file that is written from its beginning, or a named pipe, for which opening and writing wait until
/// another program reads it.
class OutputFile {
 public:
  /// Creates the file for its owner alone, or removes an existing file's contents and keeps its permissions.
  /// Throws Error "FILE: REASON" if it cannot be written, or if the user interrupts the wait. `operations`
  /// must outlive the object.
  OutputFile(const std::filesystem::path& file, const InterruptQuery& interrupted,
             FileOperations& operations);

  /// The stream fails once writing has failed.
  std::ostream& Stream() noexcept { return stream_; }

  /// Writes what is left and closes the file. Returns the first failure since it was opened.
  std::error_code Finish();

 private:
  FileOperations& operations_;
  FileDescriptor file_;
  OutputBuffer buffer_;
  std::ostream stream_;
};

}  // namespace krnqb::files
