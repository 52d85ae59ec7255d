#include "cli/report/import_command.h"

#include <fmt/format.h>

#include <filesystem>
#include <utility>

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "cli/import/command.h"
#include "cli/import/report.h"
#include "cli/reconcile/reconciling.h"
#include "cli/report/footer.h"
#include "cli/report/import_page.h"
#include "cli/report/witness.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

bool Succeeded(const ImportOutcome& outcome) {
  return outcome.errorLine.empty() && outcome.result != ImportResult::Cancelled;
}

// Nothing is written after an interrupt, nor for a command line that is wrong.
bool IsReported(const ImportOutcome& outcome) {
  return outcome.result != ImportResult::Interrupted && outcome.result != ImportResult::WrongUsage &&
         outcome.basis.has_value();
}

class ReportedImport {
 public:
  ReportedImport(const ImportCommand& options, const Surroundings& surroundings, const ImportOutcome& outcome,
                 ReportWitness& witness)
      : options_(options), surroundings_(surroundings), outcome_(outcome), witness_(witness) {}

  void WritePage(std::string_view whatToDo) {
    ImportStory story{.outcome = outcome_};
    if (Succeeded(outcome_)) Reconcile(story);
    const std::optional<ledger::LedgerFile> ledger = OpenLedger();
    story.ledger = ledger ? &*ledger : nullptr;
    story.times = witness_.Times();
    story.footer = FooterText(surroundings_);
    witness_.File()->Write(ImportPage(story), whatToDo);
  }

 private:
  std::optional<ledger::LedgerFile> OpenLedger() const {
    const auto file = options_.ledgerFile ? options_.ledgerFile : witness_.LedgerPlace();
    if (!Succeeded(outcome_) || !file) return std::nullopt;
    return ledger::LedgerFile::Open(PathFrom(*file));
  }

  // Where the books can be read once more; QuickBooks itself is not asked twice.
  std::optional<ReconcileOptions> Books() const {
    ReconcileOptions books;
    books.planFile = options_.planFile;
    if (options_.replayFile) {
      books.replayFile = options_.replayFile;
    } else if (options_.quickBooks) {
      books.replayFile = options_.recordFile ? options_.recordFile : witness_.RecordingPlace();
    } else {
      books.companyFile = options_.companyFile;
    }
    // A named pipe has been read.
    std::error_code unknown;
    const bool readable =
        !books.replayFile || std::filesystem::is_regular_file(PathFrom(*books.replayFile), unknown);
    return readable ? std::optional(books) : std::nullopt;
  }

  // The plan in memory is as it was saved, or as a dry run would have saved it.
  void Reconcile(ImportStory& story) {
    if (witness_.Plan() == nullptr) return;
    if (options_.balances == BalImport_None) {
      story.whyNotReconciled = "No amounts were imported, so there is nothing to compare with the books.";
      return;
    }
    const std::optional<ReconcileOptions> books = Books();
    if (!books) {
      story.whyNotReconciled =
          "The recording cannot be read a second time. To compare the plan with the books: krnqb reconcile.";
      return;
    }
    try {
      // The import has ended: an interrupt has no effect any more.
      const InterruptWatch interrupts(InterruptWatch::Interrupts::LeftAsTheyAre);
      ReconciledPlan plan{.plan = witness_.Plan(),
                          .lastImport = KnownImport{.facts = witness_.Facts(), .asWritten = true}};
      story.reconciliation = cli::Reconcile(*books, std::move(plan), interrupts, surroundings_);
      if (options_.quickBooks) story.reconciliation->source = "QuickBooks, as this import has read it";
    } catch (const Error& error) {
      story.whyNotReconciled =
          fmt::format("The plan was not compared with the books: {}", error.Description());
    }
  }

  const ImportCommand& options_;
  const Surroundings& surroundings_;
  const ImportOutcome& outcome_;
  ReportWitness& witness_;
};

}  // namespace

CommandEnd RunWithReport(const ImportCommand& options, const Console& console,
                         const Surroundings& surroundings) {
  ReportWitness witness(options, surroundings);
  const ImportOutcome outcome = Import(options, console, surroundings, &witness);
  PrintOutcome(outcome, options, console);
  CommandEnd end = EndOf(outcome);
  if (witness.File() == nullptr || !IsReported(outcome)) return end;
  const std::string_view whatToDo =
      end.changedFiles ? "the plan was written and need not be imported again; see krnqb reconcile --report"
                       : "free space on the disk, or leave --report out";
  try {
    Attempt("writing the report failed", whatToDo,
            [&] { ReportedImport(options, surroundings, outcome, witness).WritePage(whatToDo); });
  } catch (const Failure& failure) {
    PrintError(console, failure.Line());
    if (!end.changedFiles) end.code = ExitCode::Failed;
  }
  return end;
}

}  // namespace krnqb::cli
