#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/plan/commands.h"

namespace krnqb::cli {

/// Throws Failure (WrongUsage) if one of the files that the export writes is one that it reads, belongs to
/// the plan (its backup, lock, temporary files and history), is standard output, or is not replaceable: a
/// folder, a pipe, or for the spreadsheet a file of another kind. `outputs` are the files with symbolic links
/// resolved.
void CheckExportFiles(const ExportPlanOptions& options, const std::vector<std::filesystem::path>& outputs);

}  // namespace krnqb::cli
