#pragma once

#include <filesystem>

#include "files/descriptor.h"

namespace krnqb::files {

/// Gives an open file the owner and group of the file `pattern`, if the system allows it: then an
/// administrator who works on a user's files leaves none that the user cannot use.
void KeepOwner(const FileDescriptor& file, const std::filesystem::path& pattern) noexcept;

/// Does the same for a folder; a symbolic link is not followed.
void KeepFolderOwner(const std::filesystem::path& folder, const std::filesystem::path& pattern) noexcept;

}  // namespace krnqb::files
