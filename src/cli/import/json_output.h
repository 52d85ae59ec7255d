#pragma once

#include <string>

#include "cli/import/outcome.h"

namespace krnqb::cli {

/// Returns an import's outcome as one JSON object, indented, without a line end; "result" comes first.
std::string ImportOutcomeJson(const ImportOutcome& outcome);

}  // namespace krnqb::cli
