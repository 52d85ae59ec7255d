#include "cli/record/scratch_imports.h"

#include <fmt/format.h>

#include <utility>

#include "cli/console/attempt.h"
#include "cli/exchange/interruptible_processors.h"
#include "cli/exchange/presented_processors.h"
#include "cli/exchange/shown_version.h"
#include "cli/import/expense_selection.h"
#include "cli/import/failure.h"
#include "cli/import/progress/phases.h"
#include "cli/import/settings.h"
#include "cli/record/span.h"
#include "plan_file/attributes.h"
#include "qbxml/request_catalogue.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view failed = "recording failed";
constexpr std::string_view goOn = "fix the cause and run the same command again to go on";

bool IsAboutFiscalMonth(const Error& error) noexcept {
  return error.Kind() == ErrorKind::FiscalMonthMissing || error.Kind() == ErrorKind::FiscalMonthUnreadable;
}

// Passes on an import's progress on one scale.
class ProgressSink final : public EventSink {
 public:
  ProgressSink(const ImportScope& scope, const RecordingProgress& progress, double from, double to)
      : phases_(scope), progress_(progress), from_(from), to_(to) {}

  void XMLprocessing(Variant& /*oXML*/) override {}
  void TableModified(std::string_view /*sTableID*/) override {}
  void AfterImport() override { finished_ = true; }
  void ProgressBarChange(std::int16_t percent, std::string_view description) override {
    if (!progress_) return;
    const ImportPosition& position = phases_.Next(percent, description);
    progress_(from_ + position.done * (to_ - from_), position.phase);
  }

  bool Finished() const noexcept { return finished_; }

 private:
  ImportPhases phases_;
  const RecordingProgress& progress_;
  const double from_;
  const double to_;
  bool finished_ = false;
};

ProcessorVersion VersionFor(AmountsPath path) noexcept {
  if (path == AmountsPath::Reports) return {.major = 2, .minor = 0};
  return {.major = 1, .minor = 1};
}

}  // namespace

ScratchImports::ScratchImports(const std::shared_ptr<SharedSession>& session, const ImportSource& source,
                               const RecordedSpan& span, const std::filesystem::path& folder,
                               const InterruptWatch& interrupts, const Surroundings& surroundings,
                               RecordingProgress progress)
    : session_(session),
      source_(source),
      span_(span),
      folder_(folder),
      interrupts_(interrupts),
      surroundings_(surroundings),
      progress_(std::move(progress)) {}

// With the fiscal month given, opening a session sends no request.
void ScratchImports::OpenSession() {
  OutsideWorld world;
  world.processors = InterruptibleProcessors(session_, interrupts_);
  QBDataExchange exchange(world);
  exchange.QBCompany(source_.companyPath);
  exchange.QBStartingMonth(1);
  exchange.StartingMonth();
  const Error error = LastError(exchange);
  interrupts_.StopWhenRequested();
  if (error.Number() != 0) throw Failure(ExitCode::Failed, failed, error, "fix the cause and record again");
}

void ScratchImports::Run() {
  // What is left to do is not known before the company says whether it has reports.
  constexpr double share = 0.6;
  const auto record = [&](AmountsPath path, double from, double to) {
    try {
      RunAll(ImportsFrom(path), from, to);
      paths_.push_back(path);
    } catch (const Failure& failure) {
      if (session_->Refusals() == 0 || (path == AmountsPath::Reports && paths_.empty())) throw;
      warnings_.push_back(fmt::format("no amounts can be imported from {}: {}",
                                      path == AmountsPath::Reports ? "reports" : "transactions",
                                      failure.Description()));
    }
  };
  record(AmountsPath::Transactions, 0, share);
  if (HasReports()) record(AmountsPath::Reports, share, 1);
  if (paths_.empty())
    throw CommandFailure(failed, warnings_.front(), "see whether this QuickBooks answers krnqb import");
}

// Only past performance and the range of a report depend on the product and on the first month.
std::vector<ScratchImports::Import> ScratchImports::ImportsFrom(AmountsPath path) const {
  std::vector<Import> imports;
  if (path == AmountsPath::Transactions) {
    for (const YearMonth& start : TransactionStarts(span_)) {
      imports.push_back({path, QBKRN_ALD, start, true});
      imports.push_back({path, QBKRN_COR, start, true});
    }
  } else {
    imports.push_back({path, QBKRN_ALD, span_.from, true});
    imports.push_back({path, QBKRN_COR, span_.from, true});
  }
  for (const YearMonth& start : ImportStarts(span_)) {
    if (path == AmountsPath::Reports || start == span_.from)
      imports.push_back({path, QBKRN_BRI, start, false});
  }
  return imports;
}

void ScratchImports::RunAll(const std::vector<Import>& imports, double from, double to) {
  const double step = (to - from) / static_cast<double>(imports.size());
  for (std::size_t index = 0; index < imports.size(); ++index) {
    const double begin = from + step * static_cast<double>(index);
    RunOne(imports[index], begin, begin + step);
  }
}

// The requests do not depend on the fiscal month, so that any month will do for a company that states none.
void ScratchImports::RunOne(const Import& import, double from, double to) {
  Error error = Go(import, from, to);
  if (IsAboutFiscalMonth(error) && !fiscalMonth_) {
    warnings_.emplace_back(
        "the company does not state the first month of its fiscal year in English; import with "
        "--fiscal-month");
    fiscalMonth_ = std::int16_t{1};
    error = Go(import, from, to);
  }
  if (error.Number() != 0) throw Failure(ExitCode::Failed, failed, error, goOn);
}

Error ScratchImports::Go(const Import& import, double from, double to) {
  const std::filesystem::path file =
      folder_ / PathFrom(fmt::format("{}.kpf", plan_file::ProductText(import.product)));
  if (!std::filesystem::exists(file)) plan_file::PlanFile::Create(file, import.product, span_.planStart);
  const auto plan = plan_file::PlanFile::Open(file);
  ImportCommand command;
  command.expenses = true;
  command.income = true;
  command.pastPerformance = import.pastPerformance;
  command.balances = BalImport_All;
  command.importStart = import.start;
  command.selectAllExpenses = true;
  command.fiscalMonth = fiscalMonth_;
  const ImportSettings settings = SettleImport(command, *plan);

  const ProcessorVersion shown = VersionFor(import.path);
  ImportScope scope = ScopeOf(settings, source_);
  scope.majorVersion = shown.major;
  const auto events = std::make_shared<ProgressSink>(scope, progress_, from, to);
  OutsideWorld world;
  world.processors = InterruptibleProcessors(PresentedProcessors(session_, shown), interrupts_);
  world.sinks = {events};
  world.clock = surroundings_.clock;
  QBDataExchange exchange(world);
  Configure(exchange, settings, source_, plan);
  if (import.product == QBKRN_BRI) SelectExpenses(exchange, command);
  const bool done = exchange.Go();
  interrupts_.StopWhenRequested();
  session_->RequireSound();
  Error error = LastError(exchange);
  if (error.Number() == 0 && !(done && events->Finished())) {
    return {error_number::internalError, "the import did not finish"};
  }
  return error;
}

bool ScratchImports::HasReports() {
  if (session_->Version().major == 2) return true;
  const auto* answer = session_->AnswerTo(BuildRequest(request_number::host, {}, {}));
  return answer != nullptr && ListsVersion(*answer, "2.0");
}

}  // namespace krnqb::cli
