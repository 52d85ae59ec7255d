#include "cli/doctor/command.h"

#include "cli/company/interruptible.h"
#include "cli/doctor/account_checks.h"
#include "cli/doctor/company_checks.h"
#include "cli/doctor/output.h"
#include "cli/doctor/place_checks.h"
#include "cli/doctor/plan_checks.h"
#include "cli/doctor/row_checks.h"

namespace krnqb::cli {
namespace {

Checkup Examine(const DoctorOptions& options, const InterruptWatch& interrupts,
                const Surroundings& surroundings) {
  Checkup checkup;
  std::optional<CheckedCompany> company = CheckCompany(options, interrupts, surroundings, checkup);
  interrupts.StopWhenRequested();
  const std::shared_ptr<plan_file::PlanFile> plan = CheckPlan(options, options.planFile, checkup);
  if (plan != nullptr) {
    CheckTables(*plan, checkup);
    CheckRows(*plan, checkup);
  } else {
    checkup.Omit({"tables", "twins", "cells"}, "the plan cannot be opened");
  }
  if (company) {
    CheckMonths(*company, plan.get(), checkup);
    CheckAccounts(*company->session, plan.get(), checkup);
    interrupts.StopWhenRequested();
  }
  CheckPlace(options.planFile, checkup);
  interrupts.StopWhenRequested();
  return checkup;
}

ExitCode CodeOf(const Checkup& checkup) noexcept {
  switch (checkup.Worst()) {
    case Verdict::Ok:
      return ExitCode::Done;
    case Verdict::Warn:
      return ExitCode::Incomplete;
    case Verdict::Fail:
      break;
  }
  return ExitCode::Failed;
}

}  // namespace

ExitCode Run(const DoctorOptions& options, const Console& console, const Surroundings& surroundings) {
  RequireOneCompany(options);
  return RunInterruptibly("checking", "nothing was changed", [&](const InterruptWatch& interrupts) {
    const Checkup checkup = Examine(options, interrupts, surroundings);
    console.out << (options.json ? CheckupJson(checkup) + '\n' : CheckupText(checkup));
    return CodeOf(checkup);
  });
}

}  // namespace krnqb::cli
