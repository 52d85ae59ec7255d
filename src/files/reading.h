#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "files/waiting.h"

namespace krnqb::files {

class FileOperations;

/// A document ends below this size, in bytes: 2 GiB.
inline constexpr std::uint64_t documentLimit = std::uint64_t{1} << 31U;

/// Identifies one version of a file: its device and inode, its size and when it was last written.
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t number = 0;  ///< the inode
  std::int64_t size = 0;     ///< in bytes
  std::int64_t seconds = 0;  ///< of the last modification
  std::int64_t nanoseconds = 0;

  bool operator==(const FileStamp&) const = default;
};

FileStamp StampFrom(const struct stat& status) noexcept;

struct FileContents {
  std::string bytes;
  FileStamp stamp;
};

/// Reads a whole file. Throws Error if the file is missing, cannot be read, is not a regular file, or holds
/// 2 GiB or more. `failure` begins the description, such as "cannot read the plan".
FileContents ReadFile(const std::filesystem::path& file, std::string_view failure);
/// Reads with the given file operations.
FileContents ReadFile(const std::filesystem::path& file, std::string_view failure,
                      FileOperations& operations);

/// Reads a whole document from a file or a named pipe. Throws Error "FILE: REASON" if it is missing, cannot
/// be read, is a folder or a device, or holds 2 GiB or more, and Error if the user interrupts the reading.
std::string ReadDocument(const std::filesystem::path& document, const InterruptQuery& interrupted);

/// Returns the stamp of the file that has this name now, or nullopt if there is no such file.
std::optional<FileStamp> StampOf(const std::filesystem::path& file) noexcept;

}  // namespace krnqb::files
