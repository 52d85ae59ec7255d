#pragma once

#include "cli/console/failure.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/reconcile/options.h"

namespace krnqb::cli {

/// Compares the amounts in a plan with the books and prints what every difference consists of. Changes
/// nothing. Returns Differs if an amount differs by more than the tolerance. Throws Failure if the plan, the
/// company or a document cannot be read, or the import cannot be repeated in memory.
ExitCode Run(const ReconcileOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
