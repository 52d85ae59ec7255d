#pragma once

#include "cli/import/options.h"

namespace krnqb::cli {

/// Throws Failure (WrongUsage) if a file that the import writes is also one that it reads or writes for
/// another purpose, whatever the paths are that lead to it: symbolic and hard links count, and so do standard
/// output and standard error. The plan's backup, lock, temporary files and history count as written,
/// also by a dry run. Throws it too if the plan is a version in a history.
void CheckImportFiles(const ImportCommand& options);

}  // namespace krnqb::cli
