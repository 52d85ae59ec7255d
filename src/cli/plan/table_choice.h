#pragma once

#include <optional>
#include <string>

#include "plan_file/file.h"

namespace krnqb::cli {

/// Returns the id of the table that a person means by `typed`: its id or its title, such as "Planned
/// expenses". Case-insensitive. Nothing if nothing was typed. Throws Failure, with the nearest names, if the
/// plan has no such table, or if several have that title.
std::optional<std::string> ChosenTable(const plan_file::PlanFile& plan, const std::string& file,
                                       const std::optional<std::string>& typed);

}  // namespace krnqb::cli
