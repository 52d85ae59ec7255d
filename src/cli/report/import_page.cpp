#include "cli/report/import_page.h"

#include <fmt/format.h>

#include "cli/report/came_in.h"
#include "cli/report/changes.h"
#include "cli/report/figures.h"
#include "cli/report/left_out.h"
#include "cli/report/reconcile_page.h"
#include "cli/report/settings.h"
#include "cli/report/transactions.h"
#include "cli/report/warnings.h"
#include "html/elements.h"
#include "html/page.h"
#include "plan_file/headings.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

html::Mark MarkOf(const ImportOutcome& outcome) {
  switch (outcome.result) {
    case ImportResult::Imported:
    case ImportResult::Unchanged:
    case ImportResult::DryRun:
      return html::Mark::Good;
    case ImportResult::Incomplete:
      return html::Mark::Caution;
    default:
      return html::Mark::Bad;
  }
}

std::string ResultText(const ImportOutcome& outcome) {
  switch (outcome.result) {
    case ImportResult::Imported:
      return "The plan was written.";
    case ImportResult::Unchanged:
      return "The plan is up to date and was not written.";
    case ImportResult::DryRun:
      return "Dry run: the plan was not written.";
    case ImportResult::Incomplete:
      return "The plan was written, although some data could not be read.";
    default:
      return fmt::format("The plan was not written: {}", outcome.errorDescription);
  }
}

html::Fragment ResultBox(const ImportOutcome& outcome) {
  const html::Mark mark = MarkOf(outcome);
  html::Fragment content =
      html::Paragraph(html::Badge(mark, ResultWord(outcome.result)) + html::Text(" " + ResultText(outcome)));
  if (!outcome.remedy.empty())
    content += html::Paragraph(html::Text("What to do: ") + html::Text(outcome.remedy));
  return html::Box(mark, content);
}

html::Fragment Introduction(const ImportOutcome& outcome) {
  const ImportBasis& basis = BasisOf(outcome);
  std::vector<html::Fact> facts;
  if (basis.company && !basis.company->name.empty())
    facts.push_back({"Company", html::Name(basis.company->name)});
  facts.push_back({"Plan", html::Name(basis.options.planFile)});
  if (basis.importStart)
    facts.push_back({"Months", html::Text(plan_file::TwelveMonthsText(*basis.importStart))});
  const std::size_t warnings = outcome.warnings.size() + outcome.report.Warnings().size();
  facts.push_back({"Warnings", html::Text(std::to_string(warnings))});
  return ResultBox(outcome) + html::Facts(facts);
}

struct LedgerParts {
  html::Fragment cameIn;
  html::Fragment past;
};

LedgerParts PartsOf(const ImportStory& story) {
  const std::optional<YearMonth>& start = BasisOf(story.outcome).importStart;
  if (story.ledger == nullptr || !start) return {};
  const std::vector<ledger::RowFigures> rows = FiguresOf(*story.ledger, story.ledger->Cells());
  const TransactionLists lists(*story.ledger, rows);
  return {CameIn(*story.ledger, rows, lists, *start), PastFiguresMadeOf(*story.ledger, rows, lists)};
}

html::Fragment Reconciliation(const ImportStory& story) {
  if (story.reconciliation) return ReconciliationParts(*story.reconciliation);
  return story.whyNotReconciled.empty() ? html::Fragment() : html::Paragraph(story.whyNotReconciled);
}

}  // namespace

std::string ImportPage(const ImportStory& story) {
  const ImportOutcome& outcome = story.outcome;
  const ImportBasis& basis = BasisOf(outcome);
  const LedgerParts parts = PartsOf(story);
  const std::string plan = TextOfPath(PathFrom(basis.options.planFile).filename());
  return html::PageText(
      {.title = fmt::format("Import into {}", plan),
       .introduction = Introduction(outcome),
       .sections = {{"missing", "What could not be read", MissingList(outcome)},
                    {"warnings", "Warnings", WarningList(outcome)},
                    {"figures", "Before and after", BeforeAndAfter(outcome.summary)},
                    {"came-in", "What came in", parts.cameIn},
                    {"rows", "Rows added", AddedRows(outcome.summary)},
                    {"past", "Past performance", PastPerformance(outcome.summary) + parts.past},
                    {"left-out", "What was left out", LeftOut(outcome.report)},
                    {"reconciliation", "Plan and books", Reconciliation(story)},
                    {"changes", "Every change in the plan", EveryChange(outcome.tables, basis.planStart)},
                    {"settings", "Settings, files and timings",
                     Settings(basis) + Files(outcome) + Timings(outcome, story.times)}},
       .footer = story.footer});
}

}  // namespace krnqb::cli
