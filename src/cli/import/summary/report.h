#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/import/summary/figures.h"
#include "plan_file/changes.h"

namespace krnqb::cli {

/// Returns whether any table has changed.
bool AnyChange(const std::vector<plan_file::TableChange>& tables);

/// Returns a report for people, no line of which is longer than `width` columns: the figures of each group
/// before and after the import, month by month; the rows that were added, with the sums of their year; the
/// figures of past performance; and how much has changed in all, or one line if nothing has. Every line ends
/// in LF.
std::string ChangeReport(const ImportSummary& summary, const std::vector<plan_file::TableChange>& tables,
                         std::size_t width);

}  // namespace krnqb::cli
