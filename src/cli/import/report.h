#pragma once

#include "cli/console/streams.h"
#include "cli/import/options.h"
#include "cli/import/outcome.h"

namespace krnqb::cli {

/// Prints the outcome of an import: the omissions and the failure, then, depending on the options, one JSON
/// object, or the changes and the name of the plan's previous version, or nothing.
void PrintOutcome(const ImportOutcome& outcome, const ImportCommand& options, const Console& console);

}  // namespace krnqb::cli
