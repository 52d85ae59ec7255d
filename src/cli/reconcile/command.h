#pragma once

#include "cli/console/failure.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/reconcile/options.h"
#include "cli/reconcile/output.h"

namespace krnqb::cli {

/// Throws Failure (WrongUsage) unless the options name one company or recording.
void CheckSource(const ReconcileOptions& options);

/// Prints the result, as JSON or as text, and what does not agree within the documents.
void Print(const ReconcileResult& result, const ReconcileOptions& options, const Console& console);

/// Returns the exit code for a result.
constexpr ExitCode EndOf(const ReconcileResult& result) {
  return result.agrees ? ExitCode::Done : ExitCode::Differs;
}

/// Compares the amounts in a plan with the books and prints what every difference consists of. Changes
/// nothing. Returns Differs if an amount differs by more than the tolerance. Throws Failure if the plan, the
/// company or a document cannot be read, or the import cannot be repeated in memory.
ExitCode Run(const ReconcileOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
