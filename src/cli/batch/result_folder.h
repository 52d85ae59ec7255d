#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "cli/batch/import_result.h"

namespace krnqb::cli {

/// Returns the files *.json in a folder, in alphabetical order. Throws Failure if the folder cannot be read
/// or contains no such file.
std::vector<std::filesystem::path> ResultFiles(const std::string& folder);

/// Reads the results in the files, one at a time, and returns the newest first; those of one time by name. A
/// file that cannot be read is an unreadable result. Calls `stop` before each file, which may throw.
std::vector<ImportResultFile> ReadResults(const std::vector<std::filesystem::path>& files,
                                          const std::function<void()>& stop);

}  // namespace krnqb::cli
