#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace krnqb::files {

/// Identifies one version of a file: its device and number, its size and when it was last written.
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t number = 0;  ///< the same for all names of a file
  std::int64_t size = 0;     ///< in bytes
  std::int64_t seconds = 0;  ///< of the last modification, from 1970-01-01 00:00 UTC
  std::int64_t nanoseconds = 0;

  bool operator==(const FileStamp&) const = default;
};

enum class FileType : std::uint8_t { Regular, Folder, Pipe, CharacterDevice, BlockDevice, Other };

struct FileStatus {
  FileType type = FileType::Other;
  FileStamp stamp;
};

/// Sets `status` to that of the file to which the path leads, through symbolic links. Returns why there is
/// none.
std::error_code StatusOf(const std::filesystem::path& file, FileStatus& status) noexcept;

/// Does the same for an open file.
std::error_code StatusOf(int descriptor, FileStatus& status) noexcept;

/// Returns the stamp of the file that has this name now, or nullopt if there is no such file.
std::optional<FileStamp> StampOf(const std::filesystem::path& file) noexcept;

/// Returns the last name of a path, in the form in which the system compares names.
std::string ComparedName(const std::filesystem::path& file);

}  // namespace krnqb::files
