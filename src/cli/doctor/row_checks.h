#pragma once

#include "cli/doctor/checkup.h"
#include "plan_file/file.h"

namespace krnqb::cli {

/// Checks that each actual row is at the place of the planned row with its name, and that the rows have a
/// cell for every month.
void CheckRows(const plan_file::PlanFile& plan, Checkup& checkup);

}  // namespace krnqb::cli
