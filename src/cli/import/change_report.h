#pragma once

#include <string>
#include <vector>

#include "plan_file/changes.h"

namespace krnqb::cli {

/// Whether anything in any table has changed.
bool AnyChange(const std::vector<plan_file::TableChange>& tables);

/// For a person, a table of how many rows and cells of each changed plan table came, went or changed, and the
/// names of the new rows; a line that says so when nothing has changed. With line ends.
std::string ChangeReport(const std::vector<plan_file::TableChange>& tables);

}  // namespace krnqb::cli
