#include <fmt/format.h>

#include "cli/batch/outputs.h"
#include "cli/console/text_table.h"

namespace krnqb::cli {
namespace {

using enum Alignment;

// "12 are not done: 10 failed, 2 unreadable."
std::string CountsText(const BatchOverview& overview) {
  std::string results;
  for (const auto& [word, count] : overview.byResult)
    results += fmt::format("{}{} {}", results.empty() ? "" : ", ", count, word);
  return fmt::format("{} import{} in {}: {} done, {} not done ({}).\n", overview.imports.size(),
                     overview.imports.size() == 1 ? "" : "s", overview.folder, overview.done,
                     overview.NotDone(), results);
}

std::string NotDoneText(const BatchOverview& overview) {
  TextTable table({Left, Left, Left, Left, Left, Left});
  table.AddRow({"Name", "Written (UTC)", "Result", "Company", "Plan", "Why; what to do"});
  for (const ImportResultFile& import : overview.imports) {
    if (import.done) continue;
    table.AddRow({import.name, TimeText(import.written), import.result, CompanyText(import), PlanText(import),
                  import.remedy.empty() ? import.reason : import.reason + "; " + import.remedy});
  }
  return "\nNot done, the newest first\n" + table.Text("  ");
}

std::string DoneText(const BatchOverview& overview) {
  TextTable table({Left, Left, Left, Left, Left, Right, Right, Right, Left});
  table.AddRow(
      {"Name", "Written (UTC)", "Result", "Company", "Plan", "Rows", "Cells", "Left out", "Warnings"});
  for (const ImportResultFile& import : overview.imports) {
    if (!import.done) continue;
    std::string codes;
    for (const ResultWarning& warning : import.warnings) codes += (codes.empty() ? "" : ", ") + warning.code;
    table.AddRow({import.name, TimeText(import.written), import.result, CompanyText(import), PlanText(import),
                  fmt::format("{}", import.rowsAdded), fmt::format("{}", import.cellsChanged),
                  fmt::format("{}", import.amountsLeftOut), codes});
  }
  return "\nDone, the newest first\n" + table.Text("  ");
}

std::string WarningsText(const BatchOverview& overview) {
  TextTable table({Left, Right, Right});
  table.AddRow({"Code", "Imports", "Names"});
  for (const WarningTotal& warning : overview.warnings)
    table.AddRow({warning.code, fmt::format("{}", warning.imports), fmt::format("{}", warning.accounts)});
  return "\nWarnings by code\n" + table.Text("  ");
}

std::string TotalsText(const BatchOverview& overview) {
  TextTable table({Left, Right});
  table.AddRow({"Rows added", fmt::format("{}", overview.rowsAdded)});
  table.AddRow({"Cells changed", fmt::format("{}", overview.cellsChanged)});
  table.AddRow({"Formulas cleared", fmt::format("{}", overview.formulasCleared)});
  table.AddRow({"Amounts left out", fmt::format("{}", overview.amountsLeftOut)});
  table.AddRow({"Their sum", overview.sumLeftOut ? overview.sumLeftOut->Text() : "unknown"});
  table.AddRow({"Seconds of work", fmt::format("{:.1f}", static_cast<double>(overview.milliseconds) / 1000)});
  return "\nTotals\n" + table.Text("  ");
}

}  // namespace

std::string OverviewText(const BatchOverview& overview) {
  std::string text = CountsText(overview);
  if (overview.NotDone() > 0) text += NotDoneText(overview);
  if (overview.done > 0) text += DoneText(overview);
  if (!overview.warnings.empty()) text += WarningsText(overview);
  return text + TotalsText(overview);
}

}  // namespace krnqb::cli
