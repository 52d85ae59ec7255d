#include "qbxml/exchange_replaying.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <variant>
#include <vector>

#include "krnqb/error.h"
#include "qbxml/recorded_values.h"
#include "qbxml/recording_lines.h"

namespace krnqb {
namespace {

constexpr std::string_view replayTicket = "replay";

// Returns a request as a message shows it: the start tag of its message, or the whole text if it has none.
std::string Shown(const std::string& request) {
  const std::size_t messages = request.find("<QBXMLMsgsRq");
  if (messages == std::string::npos) return request;
  const std::size_t begin = std::min(request.find('<', messages + 1), request.size());
  return request.substr(begin, request.find('>', begin) + 1 - begin);
}

// The recorded answers to one request text, in order, and the index of the next one.
struct RecordedAnswers {
  std::vector<RecordedAnswer> answers;
  std::size_t next = 0;
};

class Recording {
 public:
  void Add(std::string&& request, RecordedAnswer&& answer) {
    requests_[std::move(request)].answers.push_back(std::move(answer));
  }

  std::string NextAnswer(const std::string& request) {
    const auto found = requests_.find(request);
    if (found == requests_.end()) {
      if (!unanswered) unanswered = request;
      throw Error(error_number::unspecified,
                  "the recording holds no answer to the request " + Shown(request));
    }
    RecordedAnswers& recorded = found->second;
    const std::size_t last = recorded.answers.size() - 1;
    const RecordedAnswer& answer = recorded.answers[recorded.next < last ? recorded.next++ : last];
    if (const auto* refusal = std::get_if<Error>(&answer)) throw *refusal;
    return std::get<std::string>(answer);
  }

  ExchangeHeader header;
  std::optional<std::string> unanswered;

 private:
  std::unordered_map<std::string, RecordedAnswers> requests_;
};

class ReplayingProcessor final : public RequestProcessor {
 public:
  explicit ReplayingProcessor(std::shared_ptr<Recording> recording) : recording_(std::move(recording)) {}

  std::string ProcessRequest(std::string_view /*ticket*/, std::string_view request) override {
    return recording_->NextAnswer(std::string(request));
  }
  void OpenConnection(std::string_view /*applicationIdentifier*/,
                      std::string_view /*applicationName*/) override {}
  std::string BeginSession(std::string_view /*companyFile*/, std::int32_t /*fileMode*/) override {
    return std::string(replayTicket);
  }
  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return ticket == replayTicket ? recording_->header.company : std::string();
  }
  std::int16_t MajorVersion() override { return recording_->header.processor.major; }
  std::int16_t MinorVersion() override { return recording_->header.processor.minor; }

 private:
  std::shared_ptr<Recording> recording_;
};

class ReplayingFactory final : public ReplayedExchange {
 public:
  explicit ReplayingFactory(std::shared_ptr<Recording> recording) : recording_(std::move(recording)) {}
  const ExchangeHeader& Header() const noexcept override { return recording_->header; }
  const std::optional<std::string>& UnansweredRequest() const noexcept override {
    return recording_->unanswered;
  }
  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<ReplayingProcessor>(recording_);
  }

 private:
  std::shared_ptr<Recording> recording_;
};

[[noreturn]] void FailAsOtherFile(const std::string& name, std::string_view reason) {
  throw RecordingFault(fmt::format("{} is not a recording: {}", name, reason));
}

ExchangeHeader ReadFirstLine(const std::string& text, const RecordingLines& lines, const std::string& name) {
  try {
    const RecordedObject line = ParseRecordedLine(text);
    if (line.contains("exchange")) return ReadExchangeHeader(line);
  } catch (const NotAnObject& other) {
    FailAsOtherFile(name, fmt::format("line 1 is {}", other.Is()));
  } catch (const Error& error) {
    lines.Fail(error.Description());
  }
  FailAsOtherFile(name, R"(line 1 has no "exchange")");
}

RecordedAnswer ReadAnswer(const RecordedObject& line) {
  const auto error = line.find("error");
  if (line.contains("response") || error == line.end()) return RecordedText(line, "response");
  if (!error->is_object()) throw UnexpectedValue("error", *error, "an object");
  const auto number =
      RecordedNumber<std::int32_t>(*error, "number", std::numeric_limits<std::int32_t>::min());
  return Error(number, RecordedText(*error, "description"));
}

}  // namespace

ExchangeHeader ReadExchange(std::istream& recording, const std::string& recordingName,
                            const RecordedAnswerReceiver& receive) {
  RecordingLines lines(recording, recordingName);
  std::string text;
  if (!lines.Next(text)) FailAsOtherFile(recordingName, "it is empty");
  ExchangeHeader header = ReadFirstLine(text, lines, recordingName);
  while (lines.Next(text)) {
    std::string request;
    std::optional<RecordedAnswer> answer;
    try {
      const RecordedObject line = ParseRecordedLine(text);
      request = RecordedText(line, "request");
      answer = ReadAnswer(line);
    } catch (const Error& error) {
      lines.Fail(error.Description());
    }
    receive(std::move(request), std::move(*answer));
  }
  return header;
}

std::shared_ptr<ReplayedExchange> ReplayingProcessors(std::istream& recording,
                                                      const std::string& recordingName) {
  auto replayed = std::make_shared<Recording>();
  replayed->header =
      ReadExchange(recording, recordingName, [&](std::string&& request, RecordedAnswer&& answer) {
        replayed->Add(std::move(request), std::move(answer));
      });
  return std::make_shared<ReplayingFactory>(std::move(replayed));
}

}  // namespace krnqb
