#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/console/command_end.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"

namespace krnqb::cli {

// The commands of `krnqb plan` that use a plan's history: what was typed, and how they run.

struct PlanHistoryOptions {
  std::string file;
  bool json = false;
};

struct PlanDiffOptions {
  std::string file;
  std::optional<std::int32_t> from;  ///< the number of a kept version, as the next
  std::optional<std::int32_t> to;
  bool json = false;
};

struct PlanUndoOptions {
  std::string file;
  std::optional<std::int32_t> to;
  bool force = false;
};

/// Lists the kept versions of a plan. A version that cannot be brought back is warned of, and the result is
/// `Incomplete`.
ExitCode Run(const PlanHistoryOptions& options, const Console& console);

/// Prints what differs between the plan and a kept version, or between two kept versions.
ExitCode Run(const PlanDiffOptions& options, const Console& console);

/// Brings a kept version of the plan back.
CommandEnd Run(const PlanUndoOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
