#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "files/operations.h"

namespace krnqb::files {

/// Replaces the contents of an existing file atomically: at every instant its name refers to the complete old
/// file or the complete new one, even if the process is killed or the power fails. Writes the new contents to
/// FILE.tmp in the same folder, with the old file's permissions and, where possible, its owner, and keeps the
/// old file as FILE.bak. Returns the path of FILE.bak. `file` must not be a symbolic link, because the link
/// itself would be replaced: resolve links first.
///
/// Throws Error if a step fails; the description names the step, the file, the reason and the remedy.
/// FILE.tmp is then removed and the file unchanged, unless the folder cannot be flushed and the old file
/// cannot be restored, which the description says.
std::filesystem::path ReplaceFile(const std::filesystem::path& file, std::string_view contents,
                                  FileOperations& operations);

/// Does the same with contents that `write` writes into the empty file FILE.tmp by its name. What `write`
/// throws is passed on, and the file is unchanged.
std::filesystem::path ReplaceFile(const std::filesystem::path& file,
                                  const std::function<void(const std::filesystem::path& temporary)>& write,
                                  FileOperations& operations);

/// Creates a file together with its whole contents. Throws Error if anything of that name exists or a step
/// fails; no new file is left then.
void CreateFile(const std::filesystem::path& file, std::string_view contents, FileOperations& operations);

}  // namespace krnqb::files
