#include "cli/import/command.h"

#include <chrono>
#include <optional>

#include "cli/console/attempt.h"
#include "cli/console/text_table.h"
#include "cli/import/change_report.h"
#include "cli/import/expense_selection.h"
#include "cli/import/failure.h"
#include "cli/import/log.h"
#include "cli/import/report.h"
#include "cli/import/settings.h"
#include "cli/import/skipped_journal.h"
#include "cli/import/source.h"
#include "cli/import/watched_processors.h"
#include "files/lock.h"

namespace krnqb::cli {
namespace {

class Import {
 public:
  // With dialogs a person starts the import, without them it starts by itself.
  Import(const ImportOptions& importOptions, std::shared_ptr<ui::Dialogs> importDialogs,
         const Console& printedOn, const Surroundings& importSurroundings, ImportOutcome& importOutcome)
      : options(importOptions),
        dialogs(std::move(importDialogs)),
        console(printedOn),
        surroundings(importSurroundings),
        outcome(importOutcome),
        interrupts(dialogs == nullptr ? InterruptWatch::Interrupts::Remembered
                                      : InterruptWatch::Interrupts::LeftAsTheyAre) {
    if (console.errIsTerminal && !options.quiet && dialogs == nullptr) bar.emplace(console.err);
  }

  // Whatever happens, the outcome tells it.
  void Run() {
    try {
      ReadAndSave();
    } catch (const Failure& failure) {
      Fail(failure);
    } catch (...) {
      Fail({ExitCode::Failed, "import failed", CaughtError(), "nothing was written, import again"});
    }
  }

 private:
  void ReadAndSave() {
    if (dialogs == nullptr) CheckImportOptions(options);
    const ImportSource source = OpenImportSource(options);
    LockPlan();
    plan = Attempt([&] { return plan_file::PlanFile::Open(options.planFile); });
    const ImportSettings settings = SettleImport(options, *plan);
    if (dialogs == nullptr) Announce(settings, source);

    const plan_file::PlanContent before = plan_file::ReadPlanContent(*plan);
    ReadIntoPlan(settings, source);
    if (outcome.result == ImportResult::Cancelled) return;
    outcome.tables = plan_file::CompareTables(before, plan_file::ReadPlanContent(*plan));
    interrupts.StopWhenRequested();
    Save();
  }

  // A dry run writes nothing, not even the lock, and reads the plan as it is at one instant.
  void LockPlan() {
    if (!options.dryRun) lock = Attempt([&] { return std::optional<files::PlanLock>(options.planFile); });
  }

  void Announce(const ImportSettings& settings, const ImportSource& source) {
    for (const std::string& warning : ImportWarnings(settings, source, *plan)) Warn(console, warning);
    if (Chatty()) console.out << OneLine(AnnouncementText(settings, source)) << std::endl;
  }

  void ReadIntoPlan(const ImportSettings& settings, const ImportSource& source) {
    std::optional<ExchangeFile> recording;
    auto processors = source.processors;
    if (options.recordFile) processors = recording.emplace(*options.recordFile).Recording(processors);
    const auto log = std::make_shared<ImportLog>(outcome, interrupts, bar ? &*bar : nullptr);
    QBDataExchange exchange({.processors = WatchedProcessors(processors, interrupts, outcome.incomplete),
                             .sinks = Sinks(log),
                             .observer = log,
                             .userInterface = dialogs,
                             .registry = nullptr,
                             .clock = surroundings.clock});
    Configure(exchange, settings, source, plan);
    if (settings.product == QBKRN_BRI) SelectExpensesOf(exchange);
    const bool goResult = dialogs == nullptr ? exchange.Go() : LetAPersonImport(exchange);
    if (outcome.result == ImportResult::Cancelled) return;
    if (bar) bar->Wipe();
    interrupts.StopWhenRequested();
    if (options.journalFile) WriteJournal(*options.journalFile, outcome.skipped);
    RequireSuccess(exchange, goResult, log->AfterImportRaised());
    RequireComplete();
    if (recording) recording->Finish();
  }

  std::vector<std::shared_ptr<EventSink>> Sinks(const std::shared_ptr<EventSink>& log) const {
    if (dialogs == nullptr) return {log};
    return {log, dialogs};
  }

  void SelectExpensesOf(QBDataExchange& exchange) {
    if (dialogs != nullptr) {
      ReadSelectedExpenses(exchange, console);
    } else if (options.expenses) {
      SelectExpenses(exchange, options, console);
    }
  }

  // An import raises events from its start on; the dialog gives no result of its own.
  bool LetAPersonImport(QBDataExchange& exchange) {
    exchange.ShowDialog(dlg_QBtoKRN);
    if (outcome.events.empty()) {
      RequireComplete();  // a dialog that could not be shown was not cancelled
      outcome.result = ImportResult::Cancelled;
    }
    return true;
  }

  bool Complete() const {
    return outcome.incomplete.All().empty() && !(options.strict && outcome.skipped.Any());
  }

  void RequireComplete() const {
    if (Complete() || options.acceptIncomplete) return;
    if (outcome.incomplete.All().empty()) {
      throw CommandFailure("import failed", "amounts were left out, so nothing was written (--strict)",
                           "see --journal for each of them, or import without --strict");
    }
    throw CommandFailure("import failed", "not everything could be read, so nothing was written",
                         dialogs != nullptr ? "put it right and import again"
                                            : "put it right and import again, or add --accept-incomplete to "
                                              "write what came in");
  }

  // From here on an interrupt comes too late.
  void Save() {
    saving = true;
    const bool changed = AnyChange(outcome.tables);
    if (changed && !options.dryRun) {
      outcome.backupFile = Attempt([&] { return plan->Save().string(); });
    }
    outcome.result = options.dryRun ? ImportResult::DryRun
                     : changed      ? ImportResult::Imported
                                    : ImportResult::Unchanged;
    if (!Complete() && !options.dryRun) outcome.result = ImportResult::Incomplete;
  }

  void Fail(const Failure& failure) {
    if (bar) bar->Wipe();
    const bool interrupted = interrupts.Requested() && !saving;
    const Failure told =
        interrupted ? Failure(ExitCode::Interrupted, "import interrupted",
                              Error(error_number::unspecified, "stopped on request"), "nothing was written")
                    : failure;
    outcome.result = ResultOf(told.Code());
    outcome.errorNumber = told.Number();
    outcome.errorDescription = told.Description();
    outcome.errorLine = told.Line();
    outcome.tables.clear();
  }

  bool Chatty() const noexcept { return !options.json && !options.quiet; }

  const ImportOptions& options;
  const std::shared_ptr<ui::Dialogs> dialogs;
  const Console& console;
  const Surroundings& surroundings;
  ImportOutcome& outcome;
  const InterruptWatch interrupts;
  std::optional<ProgressBar> bar;
  std::optional<files::PlanLock> lock;
  std::shared_ptr<plan_file::PlanFile> plan;
  bool saving = false;
};

}  // namespace

ExitCode Run(const ImportOptions& options, const Console& console, const Surroundings& surroundings) {
  const auto begun = std::chrono::steady_clock::now();
  ImportOutcome outcome;
  Import(options, nullptr, console, surroundings, outcome).Run();
  const auto elapsed = std::chrono::steady_clock::now() - begun;
  outcome.elapsedMilliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count();
  PrintOutcome(outcome, options, console);
  return ExitCodeOf(outcome.result);
}

ExitCode RunWithDialog(const ImportOptions& options, const std::shared_ptr<ui::Dialogs>& dialogs,
                       const Console& console, const Surroundings& surroundings) {
  ImportOutcome outcome;
  Import(options, dialogs, console, surroundings, outcome).Run();
  PrintOutcome(outcome, options, console);
  const bool importStarted = !outcome.events.empty();
  if (importStarted && !outcome.errorLine.empty()) dialogs->ShowMessage(outcome.errorDescription);
  return ExitCodeOf(outcome.result);
}

}  // namespace krnqb::cli
