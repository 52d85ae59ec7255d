#pragma once

#include <filesystem>
#include <string_view>

#include "files/operations.h"

namespace krnqb::files {

/// Replaces the contents of an existing file so that at every instant its name stands for a whole file, the
/// old one or the new one, even when the process is killed or the power fails. The new contents go into
/// FILE.tmp in the same folder, with the old file's permissions and, where possible, owner; the old file
/// stays as FILE.bak, whose path is the result. `file` is no symbolic link: follow links first, or the link
/// would be replaced.
///
/// Error when a step fails: the file is as it was, FILE.tmp is gone, and the description says which step
/// failed on which file, why, and what to do.
std::filesystem::path ReplaceFile(const std::filesystem::path& file, std::string_view contents,
                                  FileOperations& operations);

/// Creates a file with its whole contents at once. Error when the name is taken, whatever stands there, and
/// when a step fails: there is no new file then.
void CreateFile(const std::filesystem::path& file, std::string_view contents, FileOperations& operations);

}  // namespace krnqb::files
