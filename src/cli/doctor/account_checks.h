#pragma once

#include "cli/doctor/checkup.h"
#include "cli/doctor/company_session.h"
#include "plan_file/file.h"

namespace krnqb::cli {

/// Checks which top-level accounts have a row in the plan, and whether two names differ only in case. `plan`
/// may be null.
void CheckAccounts(CompanySession& company, const plan_file::PlanFile* plan, Checkup& checkup);

}  // namespace krnqb::cli
