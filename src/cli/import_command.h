#pragma once

#include "cli/console.h"
#include "cli/import_options.h"
#include "cli/surroundings.h"

namespace krnqb::cli {

/// Imports from a company or a recording into a plan and prints what came of it, failures included. Nothing
/// of the plan's file is touched until everything has been read.
ExitCode Run(const ImportOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
