#pragma once

#include <string>
#include <vector>

#include "plan_file/changes.h"

namespace krnqb::cli {

/// Returns whether any table has changed.
bool AnyChange(const std::vector<plan_file::TableChange>& tables);

/// Returns a report for people: how many rows and cells of each changed plan table were added, removed or
/// changed, and the names of the new rows; or one line if nothing changed. Every line ends in LF.
std::string ChangeReport(const std::vector<plan_file::TableChange>& tables);

}  // namespace krnqb::cli
