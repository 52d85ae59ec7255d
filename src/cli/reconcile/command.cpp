#include "cli/reconcile/command.h"

#include <optional>

#include "cli/company/interruptible.h"
#include "cli/reconcile/reconciling.h"

namespace krnqb::cli {

void CheckSource(const ReconcileOptions& options) {
  if (options.companyFile && options.replayFile) {
    throw WrongUsage("--company and --replay are both given", "give one of them");
  }
  RequireOneCompany(options, options.replayFile);
}

void Print(const ReconcileResult& result, const ReconcileOptions& options, const Console& console) {
  for (const std::string& finding : result.findings) Warn(console, finding);
  console.out << (options.json ? ReconcileJson(result) + '\n' : ReconcileText(result, console.outWidth));
}

ExitCode Run(const ReconcileOptions& options, const Console& console, const Surroundings& surroundings) {
  CheckSource(options);
  return RunInterruptibly("reconciling", "nothing was changed", [&](const InterruptWatch& interrupts) {
    const ReconcileResult result = Reconcile(options, std::nullopt, interrupts, surroundings);
    Print(result, options, console);
    return EndOf(result);
  });
}

}  // namespace krnqb::cli
