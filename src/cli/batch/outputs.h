#pragma once

#include <string>

#include "cli/batch/overview.h"

namespace krnqb::cli {

/// Returns an overview for people: the imports that are not done and why, those that are, warnings by code,
/// totals.
std::string OverviewText(const BatchOverview& overview);

/// Returns one JSON object, indented, without a line end.
std::string OverviewJson(const BatchOverview& overview);

/// Returns a line of headings and a line for each import.
std::string OverviewCsv(const BatchOverview& overview);

/// Returns a page for browsers that needs nothing besides itself.
std::string OverviewPage(const BatchOverview& overview);

}  // namespace krnqb::cli
