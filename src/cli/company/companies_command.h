#pragma once

#include "cli/commands.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"

namespace krnqb::cli {

/// Lists the company files in the folder of the QuickBooks program, one path a line or as JSON.
ExitCode Run(const CompaniesOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
