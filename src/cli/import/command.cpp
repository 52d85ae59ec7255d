#include "cli/import/command.h"

#include <chrono>
#include <optional>

#include "cli/console/attempt.h"
#include "cli/console/text_table.h"
#include "cli/exchange/interruptible_processors.h"
#include "cli/exchange/ledger_output.h"
#include "cli/import/asked_data.h"
#include "cli/import/dialog_task.h"
#include "cli/import/expense_selection.h"
#include "cli/import/failure.h"
#include "cli/import/file_guard.h"
#include "cli/import/history_facts.h"
#include "cli/import/log.h"
#include "cli/import/notices/omissions.h"
#include "cli/import/notices/skipped_journal.h"
#include "cli/import/replay_failure.h"
#include "cli/import/report.h"
#include "cli/import/settings.h"
#include "cli/import/source.h"
#include "cli/import/summary/report.h"
#include "files/lock.h"
#include "files/reading.h"
#include "plan_file/history/digest.h"
#include "plan_file/history/keeping.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

ImportCompany CompanyOf(const ImportSource& source) {
  const bool opened = source.facts != nullptr && source.recording == nullptr;
  return {
      .path = opened && !source.facts->companyPath.empty() ? source.facts->companyPath : source.companyPath,
      .name = source.companyName,
      .processorVersion = source.processorVersion,
      .majorVersion = ShownMajorVersion(source)};
}

constexpr std::string_view ledgerRemedy =
    "the plan was not written; give another file with --ledger, or import without it";
// A ledger that nobody asked for is in the folder for temporary files.
constexpr std::string_view scratchRemedy =
    "the plan was not written; free space in the folder for temporary files, or import without --report";

class PlanImport {
 public:
  // With dialogs the user starts the import; without them (null) it starts at once. The witness may be null.
  PlanImport(const ImportCommand& options, std::shared_ptr<ui::Dialogs> dialogs, const Console& console,
             const Surroundings& surroundings, ImportOutcome& outcome, ImportWitness* witness)
      : options_(options),
        dialogs_(std::move(dialogs)),
        console_(console),
        surroundings_(surroundings),
        outcome_(outcome),
        witness_(witness),
        interrupts_(dialogs_ == nullptr ? InterruptWatch::Interrupts::Remembered
                                        : InterruptWatch::Interrupts::LeftAsTheyAre) {
    outcome_.basis = ImportBasis{.options = options_,
                                 .product = options_.product,
                                 .planStart = options_.planStart,
                                 .importStart = options_.importStart,
                                 .company = {}};
    if (console_.errIsTerminal && !options_.quiet && dialogs_ == nullptr)
      bar_.emplace(console_.err, console_.errWidth);
  }

  // Records every result, including failures, in the outcome.
  void Run() {
    try {
      ReadAndSave();
    } catch (const Failure& failure) {
      Fail(failure);
    } catch (...) {
      Fail({ExitCode::Failed, "import failed", CaughtError(), "nothing was written; run the import again"});
    }
  }

 private:
  void ReadAndSave() {
    if (dialogs_ == nullptr) CheckImportOptions(options_);
    CheckImportFiles(options_);
    if (witness_ != nullptr) witness_->Begin();
    const ImportSource source = OpenImportSource(options_, interrupts_, surroundings_);
    ImportBasis& basis = Basis();
    basis.company = CompanyOf(source);
    interrupts_.StopWhenRequested();
    const ImportSettings settings = OpenPlan();
    interrupts_.StopWhenRequested();
    basis.product = settings.product;
    basis.planStart = settings.planStart;
    basis.importStart = settings.importStart;
    if (dialogs_ == nullptr) Announce(settings, source);

    const plan_file::PlanContent before = plan_file::ReadPlanContent(*plan_);
    try {
      ReadIntoPlan(settings, source);
    } catch (const Failure&) {
      FailIfAnswersAreMissing(settings, source);
      throw;
    }
    if (outcome_.result == ImportResult::Cancelled) return;
    const plan_file::PlanContent after = plan_file::ReadPlanContent(*plan_);
    outcome_.tables = plan_file::CompareTables(before, after);
    outcome_.summary = SummarizeImport(before, after, outcome_.tables, outcome_.summary.scope);
    KeepRows(facts_, after, settings.product, outcome_.summary.scope.balances);
    if (witness_ != nullptr) witness_->Keep(plan_, facts_);
    if (ledger_) ledger_->Finish(LedgerFactsNow());
    interrupts_.PassPointOfNoReturn();
    Save();
  }

  // Reads the plan before locking it, so that no lock file is left beside a file that is not a plan or that
  // the options contradict, and again if another import has replaced it in between.
  ImportSettings OpenPlan() {
    const auto open = [&] {
      plan_ = Attempt([&] { return plan_file::PlanFile::Open(PathFrom(options_.planFile)); });
      return SettleImport(options_, *plan_);
    };
    const auto stamp = files::StampOf(PathFrom(options_.planFile));
    ImportSettings settings = open();
    LockPlan();
    return files::StampOf(PathFrom(options_.planFile)) == stamp ? settings : open();
  }

  ImportBasis& Basis() { return outcome_.basis ? *outcome_.basis : outcome_.basis.emplace(); }

  // A dry run writes nothing, not even a lock file. It needs no lock: it reads the plan only once.
  void LockPlan() {
    if (!options_.dryRun)
      lock_ = Attempt([&] { return std::optional<files::PlanLock>(PathFrom(options_.planFile)); });
  }

  void Announce(const ImportSettings& settings, const ImportSource& source) {
    for (const ImportWarning& warning : ImportWarnings(settings, source)) Report(warning);
    if (Chatty()) console_.out << OneLine(AnnouncementText(settings, source)) << std::endl;
  }

  void Report(const ImportWarning& warning) {
    Warn(console_, warning.message);
    outcome_.warnings.push_back(warning);
  }

  void ReadIntoPlan(const ImportSettings& settings, const ImportSource& source) {
    std::optional<ExchangeFile> recording;
    auto processors = source.processors;
    if (const auto file = RecordingFile())
      processors = recording.emplace(*file).Recording(source, AskedData(settings, source));
    processors = ShownProcessors(source, processors);
    if (witness_ != nullptr) processors = witness_->Watching(processors);
    std::optional<ProgressDisplay> progress;
    if (bar_) progress.emplace(*bar_, ScopeOf(settings, source), surroundings_.stopwatch);
    if (const auto file = LedgerFile())
      ledger_.emplace(*file, options_.ledgerFile ? ledgerRemedy : scratchRemedy);
    const auto log = std::make_shared<ImportLog>(outcome_, interrupts_, progress ? &*progress : nullptr,
                                                 ledger_ ? &ledger_->Writer() : nullptr);
    QBDataExchange exchange({.processors = InterruptibleProcessors(processors, interrupts_),
                             .sinks = Sinks(log),
                             .observer = log,
                             .userInterface = dialogs_,
                             .registry = nullptr,
                             .clock = surroundings_.clock});
    Configure(exchange, settings, source, plan_);
    if (settings.product == QBKRN_BRI) SelectExpensesOf(exchange);
    if (dialogs_ != nullptr) LetTheDialogStop(settings, source);
    const bool goResult = dialogs_ == nullptr ? exchange.Go() : ImportFromDialog(exchange);
    if (outcome_.result == ImportResult::Cancelled) return;
    Basis().company = CompanyOf(source);
    outcome_.summary.scope = SummaryScopeOf(exchange.Options(), settings);
    if (bar_) bar_->Wipe();
    interrupts_.StopWhenRequested();
    for (const std::string& reason : plan_->RefusedLoads()) outcome_.report.Notify(RefusedLoad(reason));
    if (options_.journalFile) WriteJournal(*options_.journalFile, outcome_.report);
    RequireSuccess(exchange, goResult, log->AfterImportRaised());
    RequireComplete();
    facts_ = HistoryFacts(settings, exchange.Options());
    if (recording) recording->Finish();
  }

  // One sentence says all that there is to say about a recording that lacks answers.
  void FailIfAnswersAreMissing(const ImportSettings& settings, const ImportSource& source) {
    const auto failure = ReplayFailure(settings, source);
    if (!failure) return;
    outcome_.report = ImportReport();
    throw Failure(*failure);
  }

  std::optional<std::string> RecordingFile() const {
    if (options_.recordFile || witness_ == nullptr) return options_.recordFile;
    return witness_->RecordingPlace();
  }

  std::optional<std::string> LedgerFile() const {
    if (options_.ledgerFile || witness_ == nullptr) return options_.ledgerFile;
    return witness_->LedgerPlace();
  }

  std::vector<std::shared_ptr<EventSink>> Sinks(const std::shared_ptr<EventSink>& log) const {
    std::vector<std::shared_ptr<EventSink>> sinks{log};
    if (dialogs_ != nullptr) sinks.push_back(dialogs_);
    if (witness_ != nullptr) sinks.push_back(witness_->Events());
    return sinks;
  }

  void SelectExpensesOf(QBDataExchange& exchange) {
    std::optional<ImportWarning> warning;
    if (dialogs_ != nullptr) {
      warning = ReadSelectedExpenses(exchange);
    } else if (options_.expenses) {
      warning = SelectExpenses(exchange, options_);
    }
    if (warning) Report(*warning);
  }

  void LetTheDialogStop(const ImportSettings& settings, const ImportSource& source) {
    dialogs_->Follow(DialogTask(settings, source));
    interrupts_.ListenThrough([dialogs = dialogs_] { dialogs->ShowNow(); });
  }

  // The dialog returns no result: it was cancelled if no event was raised.
  bool ImportFromDialog(QBDataExchange& exchange) {
    exchange.ShowDialog(dlg_QBtoKRN);
    if (outcome_.events.empty()) {
      RequireComplete();  // fails if the dialog could not be shown
      outcome_.result = ImportResult::Cancelled;
    }
    return true;
  }

  bool Complete() const {
    const ImportReport& report = outcome_.report;
    return report.Complete() &&
           (!options_.strict || (!report.AnyLeftOutOfRequested() && report.Warnings().empty()));
  }

  void RequireComplete() const {
    if (Complete() || options_.acceptIncomplete) return;
    if (outcome_.report.Complete()) {
      throw CommandFailure(
          "import failed", "the plan would differ from the books; nothing was written (--strict)",
          "see the warnings and list left-out amounts with --journal FILE, or import without "
          "--strict");
    }
    throw CommandFailure("import failed", "some data could not be read; nothing was written",
                         dialogs_ != nullptr
                             ? "fix the cause and run the import again"
                             : "fix the cause and run the import again, or add --accept-incomplete "
                               "to write what was read");
  }

  void Save() {
    saving_ = true;
    if (ledger_) ledger_->Place();
    const bool changed = AnyChange(outcome_.tables);
    if (changed && !options_.dryRun) {
      // Once the plan is saved nothing may fail any more, so there is room for the name already.
      constexpr std::size_t roomForSuffix = 16;
      outcome_.backupFile.reserve(TextOfPath(plan_->Path()).size() + roomForSuffix);
      Attempt([&] { SaveWithHistory(); });
    }
    if (ledger_) ledger_->Keep();
    outcome_.result = options_.dryRun ? ImportResult::DryRun
                      : changed       ? ImportResult::Imported
                                      : ImportResult::Unchanged;
    if (!Complete() && !options_.dryRun) outcome_.result = ImportResult::Incomplete;
  }

  // The plan with the import's cells is what is written next, or else what is in its file.
  ledger::LedgerFacts LedgerFactsNow() const {
    const bool changed = AnyChange(outcome_.tables);
    ledger::LedgerFacts facts = FactsForLedger(facts_);
    facts.when = plan_file::MomentText(ClockOf(surroundings_)->Now());
    facts.plan = TextOfPath(plan_->Path());
    facts.planDigest = plan_file::DigestOf(
        changed ? plan_->Text() : files::ReadFile(plan_->Path(), "cannot read the plan").bytes);
    facts.planVersion = !changed          ? ledger::plan_version::unchanged
                        : options_.dryRun ? ledger::plan_version::dryRun
                                          : ledger::plan_version::written;
    if (outcome_.basis && outcome_.basis->company) {
      facts.company = outcome_.basis->company->path;
      facts.companyName = outcome_.basis->company->name;
    }
    return facts;
  }

  void SaveWithHistory() {
    CountChanges(facts_, outcome_.tables);
    files::SystemFileOperations operations;
    const std::string now = plan_file::MomentText(ClockOf(surroundings_)->Now());
    const plan_file::KeptSave saved =
        plan_file::SaveWithHistory(*plan_, facts_, now, options_.keptVersions, operations);
    AssignPath(outcome_.backupFile, saved.backup);
    outcome_.historyNumber = saved.number;
  }

  void Fail(const Failure& failure) {
    if (bar_) bar_->Wipe();
    const bool interrupted = interrupts_.Requested() && !saving_;
    const Failure reported =
        interrupted ? interrupts_.Interruption("import interrupted", "nothing was written") : failure;
    SetFailure(outcome_, reported);
    if (interrupted) outcome_.interruption = reported.Code();
    outcome_.tables.clear();
    outcome_.summary = {};
  }

  bool Chatty() const noexcept { return !options_.json && !options_.quiet; }

  const ImportCommand& options_;
  const std::shared_ptr<ui::Dialogs> dialogs_;
  const Console& console_;
  const Surroundings& surroundings_;
  ImportOutcome& outcome_;
  ImportWitness* const witness_;
  InterruptWatch interrupts_;
  std::optional<ProgressBar> bar_;
  std::optional<files::PlanLock> lock_;
  std::shared_ptr<plan_file::PlanFile> plan_;
  plan_file::ImportFacts facts_;
  std::optional<LedgerOutput> ledger_;
  bool saving_ = false;
};

}  // namespace

CommandEnd EndOf(const ImportOutcome& outcome) {
  return {ExitCodeOf(outcome), !outcome.backupFile.empty()};
}

ImportOutcome Import(const ImportCommand& options, const Console& console, const Surroundings& surroundings,
                     ImportWitness* witness) {
  const std::chrono::milliseconds begun = StopwatchTime(surroundings);
  ImportOutcome outcome;
  PlanImport(options, nullptr, console, surroundings, outcome, witness).Run();
  outcome.elapsedMilliseconds = (StopwatchTime(surroundings) - begun).count();
  return outcome;
}

CommandEnd Run(const ImportCommand& options, const Console& console, const Surroundings& surroundings) {
  const ImportOutcome outcome = Import(options, console, surroundings, nullptr);
  PrintOutcome(outcome, options, console);
  return EndOf(outcome);
}

CommandEnd RunWithDialog(const ImportCommand& options, const std::shared_ptr<ui::Dialogs>& dialogs,
                         const Console& console, const Surroundings& surroundings) {
  ImportOutcome outcome;
  PlanImport(options, dialogs, console, surroundings, outcome, nullptr).Run();
  PrintOutcome(outcome, options, console);
  const bool importStarted = !outcome.events.empty();
  const bool stopped = outcome.result == ImportResult::Interrupted;
  if (importStarted && !stopped && !outcome.errorLine.empty()) dialogs->ShowMessage(outcome.errorDescription);
  return EndOf(outcome);
}

}  // namespace krnqb::cli
