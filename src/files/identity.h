#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace krnqb::files {

/// Identifies a file independently of the path that leads to it: by its device and inode, or, if the file
/// does not exist yet, by those of its folder and by its name.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t number = 0;  ///< the inode
  std::string newName;       ///< empty if the file exists

  bool operator==(const FileIdentity&) const = default;
};

/// Returns the identity of the file that the path leads to, with all symbolic links followed, also those to a
/// file that does not exist yet. Returns nullopt if there is no such file and none can be created, and for
/// character devices such as /dev/null, which hold nothing.
std::optional<FileIdentity> IdentityOf(const std::filesystem::path& file);

/// Returns the identity of an open file; nullopt if the descriptor is closed or is a character device.
std::optional<FileIdentity> IdentityOf(int descriptor) noexcept;

/// Returns the path of the file itself if `file` is a symbolic link, also one to a file that does not exist
/// yet; otherwise `file`.
std::filesystem::path LinkTarget(const std::filesystem::path& file);

}  // namespace krnqb::files
