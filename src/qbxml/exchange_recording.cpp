#include "qbxml/exchange_recording.h"

#include "qbxml/forwarding_processor.h"
#include "qbxml/recording_text.h"
#include "support/error_handling.h"

namespace krnqb {
namespace {

class RecordingProcessor final : public ForwardingProcessor {
 public:
  RecordingProcessor(std::unique_ptr<RequestProcessor> inner, std::shared_ptr<ExchangeRecorder> recorder)
      : ForwardingProcessor(std::move(inner)), recorder_(std::move(recorder)) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    try {
      std::string response = ForwardingProcessor::ProcessRequest(ticket, request);
      recorder_->RecordAnswer(request, response);
      return response;
    } catch (...) {
      const Error error = CaughtError();
      recorder_->RecordRefusal(request, error.Number(), error.Description());
      throw;
    }
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    std::string ticket = ForwardingProcessor::BeginSession(companyFile, fileMode);
    recorder_->RecordSession(GetCurrentCompanyFileName(ticket),
                             {.major = MajorVersion(), .minor = MinorVersion()});
    return ticket;
  }

 private:
  std::shared_ptr<ExchangeRecorder> recorder_;
};

class RecordingFactory final : public RequestProcessorFactory {
 public:
  RecordingFactory(std::shared_ptr<RequestProcessorFactory> inner, std::shared_ptr<ExchangeRecorder> recorder)
      : inner_(std::move(inner)), recorder_(std::move(recorder)) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<RecordingProcessor>(inner_->Create(), recorder_);
  }

 private:
  std::shared_ptr<RequestProcessorFactory> inner_;
  std::shared_ptr<ExchangeRecorder> recorder_;
};

}  // namespace

void ExchangeRecorder::RecordSession(std::string_view company, const ProcessorVersion& processor) {
  if (sessionRecorded_) return;
  sessionRecorded_ = true;
  header_.company = company;
  header_.processor = processor;
  output_ << ExchangeHeaderLine(header_);
}

void ExchangeRecorder::RecordAnswer(std::string_view request, std::string_view response) {
  output_ << RecordedAnswerLine(request, response);
}

void ExchangeRecorder::RecordRefusal(std::string_view request, std::int32_t number,
                                     std::string_view description) {
  output_ << RecordedRefusalLine(request, number, description);
}

std::string RecordedAnswerLine(std::string_view request, std::string_view response) {
  return RecordedLineText({{"request", request}, {"response", response}});
}

std::string RecordedRefusalLine(std::string_view request, std::int32_t number, std::string_view description) {
  return RecordedLineText(
      {{"request", request}, {"error", {{"number", number}, {"description", description}}}});
}

std::shared_ptr<RequestProcessorFactory> RecordingProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                             std::shared_ptr<ExchangeRecorder> recorder) {
  return std::make_shared<RecordingFactory>(std::move(inner), std::move(recorder));
}

}  // namespace krnqb
