#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/import/options.h"

namespace krnqb::cli {

/// Throws Failure (WrongUsage) if a file that the import writes is also one that it reads or writes for
/// another purpose, whatever the paths are that lead to it: symbolic and hard links count, and so do standard
/// output and standard error. The plan's backup, lock, temporary files and history count as written,
/// also by a dry run. Throws it too if the plan is a version in a history.
void CheckImportFiles(const ImportCommand& options);

/// A file that a command reads, and the option that names it.
struct ReadFile {
  std::string_view option;
  std::string path;
};

/// Throws Failure (WrongUsage) if the file of --report is also one that the command reads, one of a plan's
/// files, standard output or standard error.
void CheckReportFile(const std::string& report, const std::string& plan, const std::vector<ReadFile>& read);

}  // namespace krnqb::cli
