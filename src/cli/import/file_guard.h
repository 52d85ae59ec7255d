#pragma once

#include "cli/import/options.h"

namespace krnqb::cli {

/// Throws Failure (WrongUsage) if a file that the import writes is also one that it reads or writes for
/// another purpose, whatever the paths are that lead to it: symbolic and hard links count, and so do standard
/// output and standard error. The plan's backup, lock and temporary files count as written, also by a dry
/// run.
void CheckImportFiles(const ImportCommand& options);

}  // namespace krnqb::cli
