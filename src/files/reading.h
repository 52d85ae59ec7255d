#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace krnqb::files {

/// What tells one version of a file from another: which file it is, its size and when it was last written.
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t number = 0;  ///< the file's own number on its device
  std::int64_t size = 0;     ///< in bytes
  std::int64_t seconds = 0;  ///< of the last writing
  std::int64_t nanoseconds = 0;

  bool operator==(const FileStamp&) const = default;
};

struct FileContents {
  std::string bytes;
  FileStamp stamp;
};

/// Reads a whole file. Error when there is none, when it cannot be read and when it is no ordinary file;
/// `failure` begins the description, such as "cannot read the plan".
FileContents ReadFile(const std::filesystem::path& file, std::string_view failure);

/// The stamp of the file that has this name now; none when there is no such file.
std::optional<FileStamp> StampOf(const std::filesystem::path& file) noexcept;

}  // namespace krnqb::files
