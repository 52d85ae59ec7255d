#pragma once

#include "cli/console.h"
#include "cli/import_options.h"
#include "cli/import_outcome.h"

namespace krnqb::cli {

/// Prints what came of an import: the omissions and the failure, then, as the options ask, one JSON object,
/// or what changed and where the plan's previous version is kept, or nothing.
void PrintOutcome(const ImportOutcome& outcome, const ImportOptions& options, const Console& console);

}  // namespace krnqb::cli
