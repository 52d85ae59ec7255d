#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "plan_file/history/folder.h"
#include "plan_file/history/state.h"

namespace krnqb::plan_file {

/// A version in a plan's history, as far as it can be read.
struct ListedVersion {
  std::int32_t number = 0;
  std::optional<HistoryEntry> entry;  ///< nullopt if its description is missing or damaged
  std::string fault;  ///< why the version cannot be brought back, and what to do; empty if it can be
};

/// Returns the versions of a history in increasing order. Reads every one of them.
std::vector<ListedVersion> ListVersions(const HistoryFolder& folder, const HistoryState& state);

}  // namespace krnqb::plan_file
