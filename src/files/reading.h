#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "files/status.h"
#include "files/waiting.h"

namespace krnqb::files {

class FileOperations;

/// A document ends below this size, in bytes: 2 GiB.
inline constexpr std::uint64_t documentLimit = std::uint64_t{1} << 31U;

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

}  // namespace krnqb::files
