#pragma once

#include "cli/console/failure.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/reconcile/options.h"

namespace krnqb::cli {

/// Compares a plan with the books, writes the page that --report names, and prints as `Run` does. Throws
/// Failure as `Run` does, and if the page cannot be written.
ExitCode RunWithReport(const ReconcileOptions& options, const Console& console,
                       const Surroundings& surroundings);

}  // namespace krnqb::cli
