#pragma once

#include "cli/console/streams.h"
#include "cli/import/options.h"
#include "cli/import/outcome.h"

namespace krnqb::cli {

/// Prints what came of an import: the omissions and the failure, then, as the options ask, one JSON object,
/// or what changed and where the plan's previous version is kept, or nothing.
void PrintOutcome(const ImportOutcome& outcome, const ImportCommand& options, const Console& console);

}  // namespace krnqb::cli
