#pragma once

#include <optional>
#include <string>

#include "cli/console/surroundings.h"
#include "cli/doctor/checkup.h"
#include "cli/doctor/company_session.h"
#include "cli/exchange/company_choice.h"
#include "company/file.h"
#include "plan_file/file.h"

namespace krnqb::cli {

/// A company whose checks found nothing that would keep it from being asked.
struct CheckedCompany {
  std::optional<company::CompanyFile> file;  ///< nothing for QuickBooks
  std::unique_ptr<CompanySession> session;
  bool reports = false;  ///< whether amounts come from reports
};

/// Checks that a company opens, is whole, answers a version that imports work with, and states its fiscal
/// year. Returns it unless it cannot be asked further. Throws Error if the user interrupts.
std::optional<CheckedCompany> CheckCompany(const CompanyChoice& choice, const InterruptWatch& interrupts,
                                           const Surroundings& surroundings, Checkup& checkup);

/// Checks which of the twelve months before the plan have transactions. `plan` may be null.
void CheckMonths(const CheckedCompany& company, const plan_file::PlanFile* plan, Checkup& checkup);

}  // namespace krnqb::cli
