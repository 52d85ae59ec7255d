#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "plan_file/attributes.h"
#include "plan_file/content.h"
#include "plan_file/file.h"

namespace krnqb::plan_file {

/// A table as a person reads it: a title that says what it is, and for each block its name, headings and
/// rows, the columns aligned by their number of characters, names on the left and everything else on the
/// right. An empty cell is a "·". `start` is the plan's, for the headings. In UTF-8, with a line end after
/// every line.
std::string TableView(const PlanTableContent& table, std::optional<PlanStart> start);

/// All tables of a plan, an empty line between them, or the one of an id; error 9 when the plan has no such
/// table.
std::string TableView(const PlanFile& plan);
std::string TableView(const PlanFile& plan, std::string_view tableId);

}  // namespace krnqb::plan_file
