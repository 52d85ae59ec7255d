#include "cli/report/witness.h"

#include <algorithm>
#include <utility>

#include "cli/console/attempt.h"
#include "qbxml/forwarding_processor.h"
#include "support/path_text.h"

namespace krnqb::cli {

using std::chrono::milliseconds;

/// Times the steps that events announce, and the requests.
class ReportWitness::Clockwork final : public EventSink {
 public:
  explicit Clockwork(const Surroundings& surroundings) noexcept : surroundings_(surroundings) {}

  void XMLprocessing(Variant& /*oXML*/) override { ++times_.events; }
  void TableModified(std::string_view /*sTableID*/) override { ++times_.events; }
  void AfterImport() override {
    ++times_.events;
    EndStep();
  }
  void ProgressBarChange(std::int16_t /*PercentValue*/, std::string_view Description) override {
    ++times_.events;
    EndStep();
    const std::string name(Description.empty() ? std::string_view("Other") : Description);
    auto step = std::ranges::find(times_.steps, name, &TimedStep::name);
    if (step == times_.steps.end()) {
      times_.steps.push_back({.name = name});
      step = std::prev(times_.steps.end());
    }
    ++step->events;
    running_ = step - times_.steps.begin();
    begun_ = StopwatchTime(surroundings_);
  }

  template <typename Request>
  std::string Timed(Request&& request) {
    ++times_.requests;
    const milliseconds begun = StopwatchTime(surroundings_);
    std::string answer = std::forward<Request>(request)();
    times_.answering += StopwatchTime(surroundings_) - begun;
    return answer;
  }

  const ImportTimes& Times() const noexcept { return times_; }

 private:
  void EndStep() {
    if (running_ < 0) return;
    times_.steps[static_cast<std::size_t>(running_)].time += StopwatchTime(surroundings_) - begun_;
    running_ = -1;
  }

  const Surroundings& surroundings_;
  ImportTimes times_;
  std::ptrdiff_t running_ = -1;
  milliseconds begun_{};
};

namespace {

template <typename Clockwork>
class TimedProcessor final : public ForwardingProcessor {
 public:
  TimedProcessor(std::unique_ptr<RequestProcessor> inner, std::shared_ptr<Clockwork> clockwork) noexcept
      : ForwardingProcessor(std::move(inner)), clockwork_(std::move(clockwork)) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    return clockwork_->Timed([&] { return ForwardingProcessor::ProcessRequest(ticket, request); });
  }

 private:
  std::shared_ptr<Clockwork> clockwork_;
};

template <typename Clockwork>
class TimedProcessors final : public RequestProcessorFactory {
 public:
  TimedProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                  std::shared_ptr<Clockwork> clockwork) noexcept
      : inner_(std::move(inner)), clockwork_(std::move(clockwork)) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<TimedProcessor<Clockwork>>(inner_->Create(), clockwork_);
  }

 private:
  std::shared_ptr<RequestProcessorFactory> inner_;
  std::shared_ptr<Clockwork> clockwork_;
};

}  // namespace

ReportWitness::ReportWitness(const ImportCommand& options, const Surroundings& surroundings)
    : options_(options), clockwork_(std::make_shared<Clockwork>(surroundings)) {}

ReportWitness::~ReportWitness() = default;

void ReportWitness::Begin() {
  file_.emplace(options_.reportFile.value_or(""));
  const bool needsScratch = !options_.ledgerFile || (options_.quickBooks && !options_.recordFile);
  if (!needsScratch) return;
  Attempt("writing the report failed", "free space in the folder for temporary files, or leave --report out",
          [&] { scratch_.emplace(); });
}

std::optional<std::string> ReportWitness::LedgerPlace() {
  if (!scratch_) return std::nullopt;
  return TextOfPath(scratch_->Path() / "import.kql");
}

std::optional<std::string> ReportWitness::RecordingPlace() {
  if (!scratch_ || !options_.quickBooks) return std::nullopt;
  return TextOfPath(scratch_->Path() / "exchange.jsonl");
}

std::shared_ptr<RequestProcessorFactory> ReportWitness::Watching(
    std::shared_ptr<RequestProcessorFactory> inner) {
  return std::make_shared<TimedProcessors<Clockwork>>(std::move(inner), clockwork_);
}

std::shared_ptr<EventSink> ReportWitness::Events() {
  return clockwork_;
}

void ReportWitness::Keep(const std::shared_ptr<plan_file::PlanFile>& plan,
                         const plan_file::ImportFacts& facts) {
  plan_ = plan;
  facts_ = facts;
}

ImportTimes ReportWitness::Times() const {
  return clockwork_->Times();
}

}  // namespace krnqb::cli
