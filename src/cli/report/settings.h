#pragma once

#include "cli/import/outcome.h"
#include "cli/report/witness.h"
#include "html/fragment.h"

namespace krnqb::cli {

/// Returns what an import was asked to do.
html::Fragment Settings(const ImportBasis& basis);

/// Returns the files of an import; of the plan and its backup with their digests.
html::Fragment Files(const ImportOutcome& outcome);

/// Returns how long an import took, step by step.
html::Fragment Timings(const ImportOutcome& outcome, const ImportTimes& times);

}  // namespace krnqb::cli
