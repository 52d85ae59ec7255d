#pragma once

#include "cli/import/outcome.h"
#include "html/fragment.h"

namespace krnqb::cli {

/// Returns the warnings of an import with what to do about them. Empty without warnings.
html::Fragment WarningList(const ImportOutcome& outcome);

/// Returns what an import could not read or write. Empty if that is nothing.
html::Fragment MissingList(const ImportOutcome& outcome);

}  // namespace krnqb::cli
