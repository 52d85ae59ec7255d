#pragma once

#include <optional>

#include "cli/console/failure.h"
#include "cli/import/settings.h"

namespace krnqb::cli {

/// Returns the failure of a replay whose recording lacked an answer: what the recording holds and what was
/// asked for. Returns nullopt if it lacked none, or if the source is a company.
std::optional<Failure> ReplayFailure(const ImportSettings& settings, const ImportSource& source);

}  // namespace krnqb::cli
