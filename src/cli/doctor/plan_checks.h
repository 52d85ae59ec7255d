#pragma once

#include <memory>
#include <string>

#include "cli/doctor/checkup.h"
#include "cli/exchange/company_choice.h"
#include "plan_file/file.h"

namespace krnqb::cli {

/// Checks that a plan opens, states its edition and its first month, and differs from the import's other
/// files. Returns the plan, or null if it does not open.
std::shared_ptr<plan_file::PlanFile> CheckPlan(const CompanyChoice& company, const std::string& planFile,
                                               Checkup& checkup);

/// Checks that the plan has the tables and blocks of its edition, with valid start rows.
void CheckTables(const plan_file::PlanFile& plan, Checkup& checkup);

}  // namespace krnqb::cli
