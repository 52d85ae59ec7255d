#pragma once

#include <filesystem>
#include <string_view>

#include "files/operations.h"

namespace krnqb::files {

/// A file that is written completely before it appears under its name. It is written as FILE.tmp in the same
/// folder, readable and writable for its owner alone. Until `Keep` is called, the destructor restores what
/// was there before: the earlier file or none.
class PreparedFile {
 public:
  /// Creates the empty FILE.tmp. `file` must not be a symbolic link. Throws Error, as every step does; the
  /// description names the step, the file, the reason and the remedy. `operations` must outlive the object.
  PreparedFile(std::filesystem::path file, FileOperations& operations);
  ~PreparedFile();
  PreparedFile(const PreparedFile&) = delete;
  PreparedFile& operator=(const PreparedFile&) = delete;

  /// Returns the path of FILE.tmp, which is there until `Place`.
  const std::filesystem::path& Temporary() const noexcept { return temporary_; }

  /// Writes the whole contents.
  void Write(std::string_view contents);

  /// Flushes the contents and gives the file its name. A killed process leaves the complete earlier or the
  /// complete new file.
  void Place();

  /// Leaves the new file in place for good.
  void Keep() noexcept;

 private:
  void Check(std::error_code failure, const char* step, const std::filesystem::path& where) const;

  std::filesystem::path file_;
  std::filesystem::path temporary_;
  std::filesystem::path previous_;
  FileOperations& operations_;
  FileDescriptor written_;
  bool hasPrevious_ = false;
  bool placed_ = false;
  bool kept_ = false;
};

}  // namespace krnqb::files
