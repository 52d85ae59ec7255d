#include "cli/explain/command.h"

#include <fmt/format.h>

#include "cli/console/attempt.h"
#include "cli/console/shell_word.h"
#include "cli/explain/figure_report.h"
#include "cli/explain/json_output.h"
#include "cli/explain/row_choice.h"
#include "cli/explain/transaction_report.h"
#include "files/reading.h"
#include "plan_file/history/digest.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

void CheckOptions(const ExplainOptions& options) {
  if (options.row && options.transaction) {
    throw WrongUsage("--row and --transaction are both given", "give one of them");
  }
  if (!options.row && !options.transaction) {
    throw WrongUsage("neither --row nor --transaction is given",
                     "name a row of the plan, or a transaction by its TxnID");
  }
  if (options.row) return;
  if (options.table) throw WrongUsage("--table is given without --row", "give --row too");
  if (options.month) throw WrongUsage("--month is given without --row", "give --row too");
}

PlanState StateOf(const ledger::LedgerFacts& facts) {
  try {
    const files::FileContents plan = files::ReadFile(PathFrom(facts.plan), "cannot read the plan");
    if (plan_file::DigestOf(plan.bytes) == facts.planDigest) return PlanState::Same;
  } catch (const Error&) {
    return PlanState::Missing;  // a ledger is explained without its plan, too
  }
  return facts.planVersion == ledger::plan_version::dryRun ? PlanState::NotWritten : PlanState::Changed;
}

std::string PlanText(const ledger::LedgerFacts& facts, PlanState state) {
  switch (state) {
    case PlanState::Same:
      return {};
    case PlanState::NotWritten:
      return fmt::format("\nThe import was a dry run: the plan {} does not contain these figures.\n",
                         ShellWord(facts.plan));
    case PlanState::Changed:
      return fmt::format("\nThe plan {} has changed since: these are the figures that the import wrote.\n",
                         ShellWord(facts.plan));
    case PlanState::Missing:
      break;
  }
  return fmt::format("\nThe plan {} is not there any more.\n", ShellWord(facts.plan));
}

// Lines that do not add up to the text of a cell are not those of the import.
void RequireAgreement(const ExplainOptions& options, const std::vector<ledger::RowFigures>& rows) {
  for (const ledger::RowFigures& row : rows) {
    for (const ledger::Figure& figure : row.figures) {
      for (const ledger::LedgerCell& cell : figure.cells) {
        if (ShowsAmount(cell, figure.amount)) continue;
        throw CommandFailure(
            "explaining the figure failed",
            fmt::format("the lines in {} do not add up to the cell's text {}", options.ledger, cell.text),
            "run the import again with --ledger");
      }
    }
  }
}

std::string FiguresText(const ledger::LedgerFile& ledger, const ExplainOptions& options, PlanState plan,
                        std::size_t width) {
  const std::vector<ledger::RowFigures> rows = ChosenRows(ledger, options);
  RequireAgreement(options, rows);
  if (options.json) return ExplanationJson(ledger, plan, rows) + '\n';
  std::string text;
  for (const ledger::RowFigures& row : rows) {
    if (!text.empty()) text += '\n';
    text += FigureReport(ledger, row, width);
  }
  return text + PlanText(ledger.Facts(), plan);
}

std::string TransactionText(const ledger::LedgerFile& ledger, const ExplainOptions& options, PlanState plan,
                            std::size_t width) {
  const std::vector<TransactionFate> fates = FatesOf(ledger, options.transaction.value_or(""));
  if (options.json) return ExplanationJson(ledger, plan, fates) + '\n';
  return TransactionReport(ledger, fates, width) + PlanText(ledger.Facts(), plan);
}

}  // namespace

ExitCode Run(const ExplainOptions& options, const Console& console) {
  CheckOptions(options);
  console.out << Attempt("reading the ledger failed", "run the import again with --ledger", [&] {
    const ledger::LedgerFile ledger = ledger::LedgerFile::Open(PathFrom(options.ledger));
    const PlanState plan = StateOf(ledger.Facts());
    return options.row ? FiguresText(ledger, options, plan, console.outWidth)
                       : TransactionText(ledger, options, plan, console.outWidth);
  });
  return ExitCode::Done;
}

}  // namespace krnqb::cli
