#include "qbxml/exchange_replaying.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <unordered_map>
#include <utility>
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

// A line with a request. Its texts are views of what it was parsed from.
struct RecordedExchange {
  std::string_view request;
  std::variant<std::string_view, Error> answer;
};

std::variant<std::string_view, Error> ReadAnswer(const RecordedObject& line) {
  const RecordedValue* error = line.Find("error");
  if (error == nullptr || line.Find("response") != nullptr) return RecordedText(line, "response");
  const RecordedObject& refusal = *OptionalObject(line, "error");
  const auto number =
      RecordedNumber<std::int32_t>(refusal, "number", std::numeric_limits<std::int32_t>::min());
  return Error(number, std::string(RecordedText(refusal, "description")));
}

RecordedExchange ReadExchangeLine(std::string& text) {
  const RecordedObject line = ParseRecordedLine(text);
  return {.request = RecordedText(line, "request"), .answer = ReadAnswer(line)};
}

[[noreturn]] void FailAsOtherFile(const std::string& name, std::string_view reason) {
  throw RecordingFault(fmt::format("{} is not a recording: {}", name, reason));
}

ExchangeHeader ReadFirstLine(std::string& text, const RecordingLines& lines, const std::string& name) {
  try {
    const RecordedObject line = ParseRecordedLine(text);
    if (line.Find("exchange") != nullptr) return ReadExchangeHeader(line);
  } catch (const NotAnObject& other) {
    FailAsOtherFile(name, fmt::format("line 1 is {}", other.Is()));
  } catch (const Error& error) {
    lines.Fail(error.Description());
  }
  FailAsOtherFile(name, R"(line 1 has no "exchange")");
}

// Passes on the lines of a recording after the first, and returns what that says.
template <typename Receiver>
ExchangeHeader ReadLines(RecordingLines& lines, const std::string& name, const Receiver& receive) {
  std::string text;
  if (!lines.Next(text)) FailAsOtherFile(name, "it is empty");
  ExchangeHeader header = ReadFirstLine(text, lines, name);
  while (lines.Next(text)) {
    RecordedExchange exchange;
    try {
      exchange = ReadExchangeLine(text);
    } catch (const Error& error) {
      lines.Fail(error.Description());
    }
    receive(exchange);
  }
  return header;
}

// Makes a text of a part of it, in place.
void KeepOnly(std::string& text, std::string_view part) {
  text.resize(static_cast<std::size_t>(part.data() + part.size() - text.data()));
  text.erase(0, text.size() - part.size());
}

// What a recording has as an answer: a refusal, the response, or where the response is.
using KeptAnswer = std::variant<Error, std::string, LinePlace>;

// The recorded answers to one request text, in order, and the index of the next one.
struct RecordedAnswers {
  std::vector<KeptAnswer> answers;
  std::size_t next = 0;
};

class Recording {
 public:
  Recording(std::unique_ptr<std::istream> recording, const std::string& name)
      : source_(std::move(recording)), name_(name), lines_(*source_, name) {}

  // Reads the recording to its end.
  void Open() {
    header = ReadLines(lines_, name_, [&](const RecordedExchange& exchange) {
      requests_[std::string(exchange.request)].answers.push_back(Kept(exchange.answer));
    });
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
    const KeptAnswer& answer = recorded.answers[recorded.next < last ? recorded.next++ : last];
    if (const auto* refusal = std::get_if<Error>(&answer)) throw *refusal;
    if (const auto* response = std::get_if<std::string>(&answer)) return *response;
    return ReadResponse(std::get<LinePlace>(answer), request);
  }

  // Takes the memory of an answer for the next one.
  void UseAgain(std::string&& answer) noexcept { spare_ = std::move(answer); }

  ExchangeHeader header;
  std::optional<std::string> unanswered;

 private:
  KeptAnswer Kept(const std::variant<std::string_view, Error>& answer) const {
    if (const auto* refusal = std::get_if<Error>(&answer)) return *refusal;
    if (const std::optional<LinePlace> place = lines_.Place()) return *place;
    return std::string(std::get<std::string_view>(answer));
  }

  std::string ReadResponse(const LinePlace& place, const std::string& request) {
    std::string text = std::exchange(spare_, {});
    lines_.ReadAgain(place, text);
    try {
      const RecordedExchange exchange = ReadExchangeLine(text);
      const auto* response = std::get_if<std::string_view>(&exchange.answer);
      if (response != nullptr && exchange.request == request) {
        KeepOnly(text, *response);
        return text;
      }
    } catch (const Error&) {  // not a line that was read before
    }
    throw Error(error_number::unspecified, fmt::format("{} has changed since it was opened", name_));
  }

  std::unique_ptr<std::istream> source_;
  std::string name_;
  RecordingLines lines_;
  std::unordered_map<std::string, RecordedAnswers> requests_;
  std::string spare_;
};

class ReplayingProcessor final : public RequestProcessor {
 public:
  explicit ReplayingProcessor(std::shared_ptr<Recording> recording) : recording_(std::move(recording)) {}

  std::string ProcessRequest(std::string_view /*ticket*/, std::string_view request) override {
    return recording_->NextAnswer(std::string(request));
  }
  void UseAgain(std::string&& answer) noexcept override { recording_->UseAgain(std::move(answer)); }
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

}  // namespace

ExchangeHeader ReadExchange(std::istream& recording, const std::string& recordingName,
                            const RecordedAnswerReceiver& receive) {
  RecordingLines lines(recording, recordingName);
  return ReadLines(lines, recordingName, [&](const RecordedExchange& exchange) {
    const auto* response = std::get_if<std::string_view>(&exchange.answer);
    receive(std::string(exchange.request),
            response != nullptr ? RecordedAnswer(std::string(*response)) : std::get<Error>(exchange.answer));
  });
}

std::shared_ptr<ReplayedExchange> ReplayingProcessors(std::unique_ptr<std::istream> recording,
                                                      const std::string& recordingName) {
  auto replayed = std::make_shared<Recording>(std::move(recording), recordingName);
  replayed->Open();
  return std::make_shared<ReplayingFactory>(std::move(replayed));
}

}  // namespace krnqb
