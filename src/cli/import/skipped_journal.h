#pragma once

#include <string>

#include "cli/import/skipped_amounts.h"

namespace krnqb::cli {

/// Writes everything that was taken in as JSON lines to a file, which it replaces: what happened, the request
/// and its period, and for an amount its reason, transaction, account and text. A CommandFailure when the
/// file cannot be written.
void WriteJournal(const std::string& file, const SkippedAmounts& skipped);

}  // namespace krnqb::cli
