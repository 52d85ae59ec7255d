#pragma once

#include "cli/import/settings.h"
#include "ui/import_task.h"

namespace krnqb::cli {

/// Returns what the options dialog shows of the import that it starts: the names of company and plan, and the
/// twelve months of amounts. Its Cancel has the effect of Ctrl-C.
ui::ImportTask DialogTask(const ImportSettings& settings, const ImportSource& source);

}  // namespace krnqb::cli
