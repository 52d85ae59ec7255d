#pragma once

#include "cli/console/command_end.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/record/options.h"

namespace krnqb::cli {

/// Records the answers to all imports of a span of months into plans with one start, so that they can be run
/// elsewhere. FILE.part keeps what has been answered until the recording is complete; a later run goes on
/// with it.
CommandEnd Run(const RecordOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
