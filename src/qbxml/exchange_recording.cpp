#include "qbxml/exchange_recording.h"

#include <rapidjson/writer.h>

#include <algorithm>

#include "qbxml/forwarding_processor.h"
#include "qbxml/recording_text.h"
#include "support/characters.h"
#include "support/error_handling.h"

namespace krnqb {
namespace {

// What a text is written to.
class TextOutput {
 public:
  using Ch = char;

  explicit TextOutput(std::string& text) noexcept : text_(text) {}
  void Put(char character) { text_.push_back(character); }
  void Flush() {}

 private:
  std::string& text_;
};

bool IsRareControlCharacter(char character) noexcept {
  return static_cast<unsigned char>(character) < ' ' && character != '\n' && character != '\r' &&
         character != '\t';
}

// Appends a text as JSON. An answer may have many megabytes, and is nearly always ordinary text.
void AppendText(std::string& line, std::string_view text) {
  if (InvalidUtf8(text) || std::ranges::any_of(text, IsRareControlCharacter)) {
    line += RecordedValueText(text);
    return;
  }
  TextOutput output(line);
  rapidjson::Writer<TextOutput> writer(output);
  writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

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
  std::string line;
  // Escapes make an answer a little longer.
  constexpr std::size_t bytesPerEscape = 16;
  line.reserve(request.size() * 2 + response.size() + response.size() / bytesPerEscape);
  line += R"({"request":)";
  AppendText(line, request);
  line += R"(,"response":)";
  AppendText(line, response);
  return line += "}\n";
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
