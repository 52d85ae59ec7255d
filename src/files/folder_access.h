#pragma once

#include <filesystem>
#include <system_error>

namespace krnqb::files {

/// Returns why no file can be created in a folder, as far as the system says so before one is created:
/// permissions, and a file system for reading only. Changes nothing.
std::error_code CheckFolderWritable(const std::filesystem::path& folder) noexcept;

}  // namespace krnqb::files
