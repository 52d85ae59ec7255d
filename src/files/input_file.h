#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "files/operations.h"
#include "files/reading.h"
#include "files/waiting.h"

namespace krnqb::files {

/// How a file is read.
struct ReadingRules {
  /// Whether a named pipe is read too. Opening it and reading it wait for the program that writes it.
  bool pipes = false;
  /// Begins the description of an error, such as "cannot open the plan", and has it end with an advice. If
  /// empty, the description is "FILE: REASON".
  std::string_view failure = {};
  InterruptQuery interrupted = {};
};

/// A file being read. Every failure to read is an Error; none looks like the end of the file.
class InputFile {
 public:
  /// Opens a file. Throws Error if it is missing, cannot be opened, or is a folder, a device or another kind
  /// of file that is not read. `rules.failure` and `operations` must outlive the object.
  InputFile(std::filesystem::path file, ReadingRules rules, FileOperations& operations);

  /// Refuses a file with `limit` bytes or more: throws Error at once if it is known to have them, and
  /// otherwise has the read throw that reaches the limit.
  void Limit(std::uint64_t limit);

  /// Reads the next bytes into `part` and returns their number, 0 at the end of the file. Throws Error if
  /// reading fails, a limit is reached or the user interrupts the reading.
  std::size_t Read(std::span<char> part);

  /// Returns the rest of the file. Throws Error as `Read` does, and if there are `limit` bytes or more.
  std::string ReadAll(std::uint64_t limit);

  /// Returns whether the file is a named pipe, which can be read only once.
  bool IsPipe() const noexcept { return !position_; }

  /// Returns how many bytes precede the next one to be read; nullopt if the file is a pipe.
  std::optional<std::uint64_t> Position() const noexcept { return position_; }

  /// Moves to a position, in bytes from the start of the file. Not for pipes. Throws Error if it fails.
  void Seek(std::uint64_t position);

  /// Returns the version of the file that was opened.
  const FileStamp& Stamp() const noexcept { return stamp_; }

 private:
  std::size_t ReadSome(std::span<char> part);
  [[noreturn]] void RefuseSize() const;
  [[noreturn]] void Fail(std::string_view reason, std::string_view advice) const;
  [[noreturn]] void Fail(std::error_code reason) const;

  std::filesystem::path file_;
  ReadingRules rules_;
  FileOperations& operations_;
  FileDescriptor opened_;
  FileStamp stamp_;
  std::uint64_t limit_ = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t read_ = 0;  // in bytes
  std::optional<std::uint64_t> position_;
};

}  // namespace krnqb::files
