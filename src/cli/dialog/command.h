#pragma once

#include "cli/commands.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"

namespace krnqb::cli {

/// Shows one of the dialogs and returns when a person has closed it. The options dialog imports into the
/// plan, as `krnqb import` does; the file dialogs print the path that was chosen.
ExitCode Run(const DialogOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
