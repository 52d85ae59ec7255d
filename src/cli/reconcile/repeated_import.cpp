#include "cli/reconcile/repeated_import.h"

#include <fmt/format.h>

#include <utility>

#include "cli/exchange/interruptible_processors.h"
#include "cli/import/expense_selection.h"
#include "cli/import/failure.h"
#include "cli/import/replay_failure.h"
#include "krnqb/observer.h"
#include "qbxml/forwarding_processor.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view failed = "reconciling failed";
constexpr std::string_view seeDryRun = "run krnqb import --dry-run with the same company to see which";

using Answers = std::shared_ptr<std::vector<std::string>>;

class AnswerKeeper final : public ForwardingProcessor {
 public:
  AnswerKeeper(std::unique_ptr<RequestProcessor> inner, Answers answers) noexcept
      : ForwardingProcessor(std::move(inner)), answers_(std::move(answers)) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    std::string answer = ForwardingProcessor::ProcessRequest(ticket, request);
    answers_->push_back(answer);
    return answer;
  }

 private:
  Answers answers_;
};

class AnswerKeepers final : public RequestProcessorFactory {
 public:
  AnswerKeepers(std::shared_ptr<RequestProcessorFactory> inner, Answers answers) noexcept
      : inner_(std::move(inner)), answers_(std::move(answers)) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<AnswerKeeper>(inner_->Create(), answers_);
  }

 private:
  std::shared_ptr<RequestProcessorFactory> inner_;
  Answers answers_;
};

// Collects bookings and, from the notices, what is known about their lines.
class BookingObserver final : public Observer {
 public:
  explicit BookingObserver(reconcile::BookedEntries& booked) noexcept : booked_(booked) {}

  void Notify(const Notice& notice) noexcept override {
    if (notice.meaning == NoticeMeaning::Incomplete) complete_ = false;
    if (notice.kind == NoticeKind::AmountSkipped && notice.skipped) booked_.LeftOut(*notice.skipped);
    const bool cut = notice.finding && notice.finding->code == WarningCode::TextCut;
    if (cut && notice.place.operation == Operation::ReadSalesTransactions) booked_.CutCost();
  }
  BookingReceiver* Bookings() noexcept override { return &booked_; }

  /// Returns whether everything that was requested could be read.
  bool Complete() const noexcept { return complete_; }

 private:
  reconcile::BookedEntries& booked_;
  bool complete_ = true;
};

class ImportEnd final : public EventSink {
 public:
  void XMLprocessing(Variant& /*oXML*/) override {}
  void TableModified(std::string_view /*sTableID*/) override {}
  void AfterImport() override { raised_ = true; }
  void ProgressBarChange(std::int16_t /*PercentValue*/, std::string_view /*Description*/) override {}

  bool Raised() const noexcept { return raised_; }

 private:
  bool raised_ = false;
};

// The user asked for a reconciliation, so a failed import is reported as that.
void RequireRepeated(const QBDataExchange& exchange, bool goResult, bool afterImportRaised) {
  try {
    RequireSuccess(exchange, goResult, afterImportRaised);
  } catch (const Failure& failure) {
    throw Failure(failure.Code(), failed, failure,
                  "run krnqb import --dry-run with the same company and plan");
  }
}

}  // namespace

std::vector<std::string> RepeatImport(const ImportSettings& settings, const ImportSource& source,
                                      const std::shared_ptr<plan_file::PlanFile>& plan, bool keepAnswers,
                                      const InterruptWatch& interrupts, const Surroundings& surroundings,
                                      reconcile::BookedEntries& booked) {
  const auto answers = std::make_shared<std::vector<std::string>>();
  std::shared_ptr<RequestProcessorFactory> processors = source.processors;
  if (keepAnswers) processors = std::make_shared<AnswerKeepers>(processors, answers);
  processors = InterruptibleProcessors(ShownProcessors(source, processors), interrupts);
  const auto observer = std::make_shared<BookingObserver>(booked);
  const auto end = std::make_shared<ImportEnd>();
  QBDataExchange exchange({.processors = processors,
                           .sinks = {end},
                           .observer = observer,
                           .userInterface = nullptr,
                           .registry = nullptr,
                           .clock = surroundings.clock});
  Configure(exchange, settings, source, plan);
  if (settings.product == QBKRN_BRI && settings.options.expenses) SelectExpenses(exchange, settings.options);
  const bool goResult = exchange.Go();
  interrupts.StopWhenRequested();
  if (const auto failure = ReplayFailure(settings, source)) {
    throw Failure(ExitCode::Failed, failed, *failure,
                  "give the --import-start with which it was recorded, or record the company again");
  }
  RequireRepeated(exchange, goResult, end->Raised());
  booked.RequireComplete();
  if (!observer->Complete()) {
    throw CommandFailure(failed, "some data could not be read", seeDryRun);
  }
  return std::move(*answers);
}

}  // namespace krnqb::cli
