#pragma once

#include "cli/console/command_end.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/import/options.h"

namespace krnqb::cli {

/// Imports and prints as `Run` does, then writes the page that --report names: also about an import that
/// failed, but not if the command line is wrong or the import was interrupted. If the page cannot be created,
/// nothing is imported. If it cannot be completed, that is reported, and the command has failed unless the
/// plan was written.
CommandEnd RunWithReport(const ImportCommand& options, const Console& console,
                         const Surroundings& surroundings);

}  // namespace krnqb::cli
