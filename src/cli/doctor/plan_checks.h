#pragma once

#include <memory>
#include <string>

#include "cli/doctor/checkup.h"
#include "cli/exchange/company_choice.h"
#include "plan_file/file.h"

namespace krnqb::cli {

/// Checks that a plan opens, states its edition and its first month, and is none of the other files of the
/// import. Returns it if it opens, else null.
std::shared_ptr<plan_file::PlanFile> CheckPlan(const CompanyChoice& company, const std::string& planFile,
                                               Checkup& checkup);

/// Checks that the plan has the tables and blocks of its edition, with valid start rows.
void CheckTables(const plan_file::PlanFile& plan, Checkup& checkup);

}  // namespace krnqb::cli
