#pragma once

#include "cli/commands.h"
#include "cli/console/streams.h"

namespace krnqb::cli {

ExitCode Run(const NewPlanOptions& options, const Console& console);

/// Shows a plan's tables, or one of them: as a person reads them, cell by cell, or as JSON.
ExitCode Run(const ShowPlanOptions& options, const Console& console);

}  // namespace krnqb::cli
