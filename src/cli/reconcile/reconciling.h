#pragma once

#include <memory>
#include <optional>

#include "cli/console/interrupt_watch.h"
#include "cli/console/surroundings.h"
#include "cli/reconcile/last_import.h"
#include "cli/reconcile/options.h"
#include "cli/reconcile/output.h"
#include "plan_file/file.h"

namespace krnqb::cli {

/// A plan that is open already, saved or not, with the import whose result it is.
struct ReconciledPlan {
  std::shared_ptr<plan_file::PlanFile> plan;
  std::optional<KnownImport> lastImport;
};

/// Compares the amounts in a plan with the books. Without `plan` the plan is read from its file, and its last
/// import from its history. An open plan is changed in memory. Throws Failure if the plan, the company or a
/// document cannot be read, or the import cannot be repeated in memory.
ReconcileResult Reconcile(const ReconcileOptions& options, std::optional<ReconciledPlan> plan,
                          const InterruptWatch& interrupts, const Surroundings& surroundings);

}  // namespace krnqb::cli
