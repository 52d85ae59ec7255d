#pragma once

#include <filesystem>

namespace krnqb::cli {

/// A new folder for temporary files, which nobody else can read. The destructor removes it with its files.
class ScratchFolder {
 public:
  /// Throws std::filesystem::filesystem_error if the folder cannot be created.
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& Path() const noexcept { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace krnqb::cli
