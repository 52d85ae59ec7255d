#include "cli/import/report.h"

#include <fmt/format.h>

#include "cli/console/shell_word.h"
#include "cli/import/json_output.h"
#include "cli/import/notices/omissions.h"
#include "cli/import/notices/skipped_amounts.h"
#include "cli/import/notices/warning_advice.h"
#include "cli/import/summary/report.h"

namespace krnqb::cli {
namespace {

std::string PlanText(const ImportOutcome& outcome, const ImportCommand& options) {
  if (outcome.result == ImportResult::DryRun) {
    return options.ledgerFile ? "Dry run: the plan was not written.\n" : "Dry run: nothing was written.\n";
  }
  if (outcome.backupFile.empty())
    return fmt::format("{} is up to date and was not written.\n", options.planFile);
  std::string text =
      fmt::format("Wrote {}. Its previous version is kept as {}.\n", options.planFile, outcome.backupFile);
  if (outcome.historyNumber) {
    text += fmt::format("To bring it back: krnqb plan undo {}\n", ShellWord(options.planFile));
  }
  return text;
}

std::string EndText(const ImportOutcome& outcome, const ImportCommand& options) {
  std::string text = PlanText(outcome, options);
  if (options.ledgerFile) {
    text += fmt::format("To see what a figure is made of: krnqb explain {} --row NAME\n",
                        ShellWord(*options.ledgerFile));
  }
  return text;
}

void PrintWarnings(const ImportOutcome& outcome, const Console& console) {
  for (const std::string& sentence : WarningSentences(outcome.report)) Warn(console, sentence);
}

void Print(const ImportOutcome& outcome, const ImportCommand& options, const Console& console) {
  for (const Notice& omission : outcome.report.Missing()) {
    PrintError(console, fmt::format("krnqb: incomplete: {}", OmissionText(omission)));
  }
  if (outcome.result == ImportResult::Cancelled) return;
  const bool failed = !outcome.errorLine.empty();
  const bool summarized = !options.json && !options.quiet && !failed;
  if (summarized)
    console.out << ChangeReport(outcome.summary, outcome.tables, console.outWidth) << std::flush;
  PrintWarnings(outcome, console);
  if (failed) PrintError(console, outcome.errorLine);
  if (options.json) {
    console.out << ImportOutcomeJson(outcome) << '\n';
  } else if (summarized) {
    console.out << SkippedReport(outcome.report) << EndText(outcome, options);
  }
}

}  // namespace

void PrintOutcome(const ImportOutcome& outcome, const ImportCommand& options, const Console& console) {
  try {
    Print(outcome, options, console);
  } catch (...) {
    // The plan may already be saved, so the import has not failed.
    console.err << "krnqb: printing the report failed: Out of memory; the exit code says how the import ended"
                << std::endl;
  }
}

}  // namespace krnqb::cli
