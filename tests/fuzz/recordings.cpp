#include <nlohmann/json.hpp>
#include <sstream>

#include "fuzz/input.h"
#include "fuzz/promise.h"
#include "qbxml/exchange_recording.h"
#include "qbxml/exchange_replaying.h"

// Recordings of exchanges. The first byte chooses: the input is a recording, or the answers to be recorded.

namespace krnqb::fuzz {
namespace {

// The outcome of a request: its answer, or the error's number and description.
std::string OutcomeOf(RequestProcessor& processor, const std::string& request) {
  std::string outcome;
  const auto error = ErrorOf([&] { outcome = "answer " + processor.ProcessRequest("replay", request); });
  return error ? "error " + std::to_string(error->Number()) + " " + error->Description() : outcome;
}

// The requests in a recording, in order.
std::vector<std::string> RequestsIn(const std::string& recording) {
  std::vector<std::string> requests;
  std::istringstream lines(recording);
  for (std::string line; std::getline(lines, line);) {
    const auto json = nlohmann::json::parse(line, nullptr, false);
    if (json.is_object() && json.contains("request")) requests.push_back(json["request"]);
  }
  return requests;
}

std::shared_ptr<RequestProcessorFactory> Replay(const std::string& recording) {
  return ReplayingProcessors(std::make_unique<std::istringstream>(recording), "exchange.jsonl");
}

void ReplayRecording(const std::string& recording) {
  std::shared_ptr<RequestProcessorFactory> processors;
  const auto refusal = ErrorOf([&] { processors = Replay(recording); });
  if (refusal) {
    Require(refusal->Description().starts_with("exchange.jsonl, line ") ||
                refusal->Description().starts_with("exchange.jsonl is not a recording: "),
            "a fault is reported with its line", refusal->Description());
    return;
  }
  // An exchange with a recording, recorded again, is the same exchange.
  std::ostringstream lines;
  const auto recorder = std::make_shared<ExchangeRecorder>(lines);
  const auto processor = RecordingProcessors(processors, recorder)->Create();
  const std::string ticket = processor->BeginSession("", 2);
  const std::vector<std::string> requests = RequestsIn(recording);
  std::vector<std::string> outcomes;
  for (const std::string& request : requests) outcomes.push_back(OutcomeOf(*processor, request));
  OutcomeOf(*processor, "not recorded");

  const auto second = Replay(lines.str())->Create();
  Require(second->GetCurrentCompanyFileName(second->BeginSession("", 2)) ==
              processor->GetCurrentCompanyFileName(ticket),
          "a recording keeps the company");
  Require(second->MajorVersion() == processor->MajorVersion() &&
              second->MinorVersion() == processor->MinorVersion(),
          "a recording keeps the versions");
  for (std::size_t index = 0; index < requests.size(); ++index) {
    Require(OutcomeOf(*second, requests[index]) == outcomes[index], "a recording keeps the answers",
            lines.str());
  }
}

// A processor that returns the same answer to every request.
class OneAnswer : public RequestProcessor {
 public:
  OneAnswer(std::string company, std::string answer)
      : company_(std::move(company)), answer_(std::move(answer)) {}
  std::string ProcessRequest(std::string_view /*ticket*/, std::string_view /*request*/) override {
    return answer_;
  }
  void OpenConnection(std::string_view /*identifier*/, std::string_view /*name*/) override {}
  std::string BeginSession(std::string_view /*companyFile*/, std::int32_t /*fileMode*/) override {
    return "ticket";
  }
  std::string GetCurrentCompanyFileName(std::string_view /*ticket*/) override { return company_; }
  std::int16_t MajorVersion() override { return 1; }
  std::int16_t MinorVersion() override { return 1; }

 private:
  std::string company_;
  std::string answer_;
};

class OneAnswerFactory : public RequestProcessorFactory {
 public:
  OneAnswerFactory(std::string company, std::string answer)
      : company_(std::move(company)), answer_(std::move(answer)) {}
  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<OneAnswer>(company_, answer_);
  }

 private:
  std::string company_;
  std::string answer_;
};

void RecordAnswers(Input& input) {
  const std::string company = input.Text();
  const std::string request = input.Text();
  const std::string answer = input.Rest();
  std::ostringstream lines;
  const auto recorder = std::make_shared<ExchangeRecorder>(lines);
  const auto processor =
      RecordingProcessors(std::make_shared<OneAnswerFactory>(company, answer), recorder)->Create();
  const std::string ticket = processor->BeginSession(company, 2);
  Require(OutcomeOf(*processor, request) == "answer " + answer, "recording changes no answer", lines.str());
  const auto replayed = Replay(lines.str())->Create();
  const std::string replayTicket = replayed->BeginSession("", 2);
  replayed->GetCurrentCompanyFileName(replayTicket);
  OutcomeOf(*replayed, request);
}

void Run(Input input) {
  if (input.Flag()) {
    RecordAnswers(input);
  } else {
    ReplayRecording(input.Rest());
  }
}

}  // namespace
}  // namespace krnqb::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krnqb::fuzz::Run({data, size});
  return 0;
}
