#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "plan_file/history/folder.h"

namespace krnqb::plan_file {

/// How a plan relates to its history.
struct HistoryState {
  PlanVersion plan;  ///< what the plan is now
  /// Whether an import or an undo wrote the plan as it is now; false if the last description is unreadable.
  bool asWritten = false;
  std::vector<std::int32_t> numbers;  ///< of the kept versions, in increasing order
  std::int32_t next = 1;              ///< the number of the next version
  std::string fault;                  ///< what is wrong with the last description; empty if nothing is
};

/// Determines the state of a plan with this digest. An import or an undo that was killed after it kept the
/// plan and before it replaced it has left an entry that did not happen: its number is the next one, and not
/// among the others.
HistoryState StateOf(const HistoryFolder& folder, std::string_view planDigest);

}  // namespace krnqb::plan_file
