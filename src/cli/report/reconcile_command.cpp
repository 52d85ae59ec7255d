#include "cli/report/reconcile_command.h"

#include <optional>

#include "cli/company/interruptible.h"
#include "cli/import/file_guard.h"
#include "cli/reconcile/command.h"
#include "cli/reconcile/reconciling.h"
#include "cli/report/footer.h"
#include "cli/report/output_file.h"
#include "cli/report/reconcile_page.h"

namespace krnqb::cli {
namespace {

void CheckFiles(const ReconcileOptions& options) {
  std::vector<ReadFile> read;
  const auto add = [&](std::string_view option, const std::optional<std::string>& path) {
    if (path && !path->empty()) read.push_back({option, *path});
  };
  add("--company", options.companyFile);
  add("--quickbooks", options.quickBooks);
  add("--replay", options.replayFile);
  for (const std::string& statement : options.statements) add("--profit-and-loss", statement);
  CheckReportFile(options.reportFile.value_or(""), options.planFile, read);
}

}  // namespace

ExitCode RunWithReport(const ReconcileOptions& options, const Console& console,
                       const Surroundings& surroundings) {
  CheckSource(options);
  CheckFiles(options);
  return RunInterruptibly("reconciling", "nothing was changed", [&](const InterruptWatch& interrupts) {
    ReportFile file(options.reportFile.value_or(""));
    const ReconcileResult result = Reconcile(options, std::nullopt, interrupts, surroundings);
    file.Write(ReconcilePage(result, FooterText(surroundings)),
               "free space on the disk, or leave --report out");
    Print(result, options, console);
    return EndOf(result);
  });
}

}  // namespace krnqb::cli
