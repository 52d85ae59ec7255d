#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "plan_file/attributes.h"
#include "plan_file/content.h"
#include "plan_file/file.h"

namespace krnqb::plan_file {

/// Returns a table as readable text: a title, and for each block its name, headings and rows. Columns are
/// aligned by number of characters, names to the left and everything else to the right; cells of more than
/// 100 characters are not aligned. An empty cell is shown as "·". `start` is the plan's start, for the
/// headings. The text is UTF-8; every line ends with LF.
std::string TableView(const PlanTableContent& table, std::optional<YearMonth> start);

/// Returns all tables of a plan, separated by empty lines, or the table of an id. Throws Error 9 if the plan
/// has no such table.
std::string TableView(const PlanFile& plan);
std::string TableView(const PlanFile& plan, std::string_view tableId);

}  // namespace krnqb::plan_file
