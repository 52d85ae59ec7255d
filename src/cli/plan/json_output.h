#pragma once

#include <optional>
#include <string>

#include "plan_file/file.h"

namespace krnqb::cli {

/// Returns a plan's tables, or only the table with an id that the plan has, as one JSON object: indented,
/// without a line end, "result" first.
std::string PlanJson(const plan_file::PlanFile& plan, const std::optional<std::string>& tableId);

}  // namespace krnqb::cli
