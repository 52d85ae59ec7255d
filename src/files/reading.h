#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace krnqb::files {

/// Identifies one version of a file: its device and inode, its size and when it was last written.
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t number = 0;  ///< the inode
  std::int64_t size = 0;     ///< in bytes
  std::int64_t seconds = 0;  ///< of the last modification
  std::int64_t nanoseconds = 0;

  bool operator==(const FileStamp&) const = default;
};

struct FileContents {
  std::string bytes;
  FileStamp stamp;
};

/// Reads a whole file. Throws Error if the file is missing, cannot be read or is not a regular file.
/// `failure` begins the description, such as "cannot read the plan".
FileContents ReadFile(const std::filesystem::path& file, std::string_view failure);

/// Returns the stamp of the file that has this name now, or nullopt if there is no such file.
std::optional<FileStamp> StampOf(const std::filesystem::path& file) noexcept;

}  // namespace krnqb::files
