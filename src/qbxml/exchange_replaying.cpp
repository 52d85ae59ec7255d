#include "qbxml/exchange_replaying.h"

#include <fmt/format.h>

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <variant>
#include <vector>

#include "krnqb/error.h"
#include "qbxml/recording_lines.h"

namespace krnqb {
namespace {

using Line = nlohmann::json;

constexpr std::string_view replayTicket = "replay";

// An error is an object in the object that is the line.
constexpr int deepestValue = 2;

Error Fault(const std::string& description) {
  return {error_number::unspecified, description};
}

// Returns a value as a message shows it. A line may hold gigabytes.
std::string Shown(const Line& value) {
  constexpr std::size_t longest = 40;
  if (value.is_object()) return "an object";
  if (value.is_array()) return "an array";
  if (!value.is_string()) return value.dump();
  const auto& text = value.get_ref<const std::string&>();
  if (text.size() <= longest) return '"' + text + '"';
  std::size_t end = longest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return '"' + text.substr(0, end) + "...";
}

const Line& Value(const Line& object, std::string_view name, std::string_view expected) {
  const auto found = object.find(name);
  if (found == object.end()) throw Fault(fmt::format("\"{}\" is missing; {} is expected", name, expected));
  return *found;
}

std::string Text(const Line& object, std::string_view name) {
  constexpr std::string_view expected = "a text";
  const Line& value = Value(object, name, expected);
  if (!value.is_string())
    throw Fault(fmt::format("\"{}\" is {}; {} is expected", name, Shown(value), expected));
  return value.get<std::string>();
}

// Returns an integer from `least` to the largest of its type. A fraction or an exponent makes none.
template <typename Number>
Number WholeNumber(const Line& object, std::string_view name, Number least) {
  constexpr Number most = std::numeric_limits<Number>::max();
  const std::string expected = fmt::format("a whole number from {} to {}", least, most);
  const Line& value = Value(object, name, expected);
  const bool fits =
      value.is_number_unsigned()
          ? value.get<std::uint64_t>() <= std::uint64_t{most} && value.get<std::int64_t>() >= least
      : value.is_number_integer() ? value.get<std::int64_t>() >= least && value.get<std::int64_t>() <= most
                                  : false;
  if (!fits) throw Fault(fmt::format("\"{}\" is {}; {} is expected", name, Shown(value), expected));
  return value.get<Number>();
}

// Parses a line. Deeper values than a recording has are refused at once, since each takes far more memory
// than its text.
Line ParsedLine(const std::string& text) {
  const auto limitDepth = [](int depth, Line::parse_event_t event, const Line& /*parsed*/) {
    const bool begins =
        event == Line::parse_event_t::object_start || event == Line::parse_event_t::array_start;
    if (begins && depth >= deepestValue)
      throw Fault(fmt::format("values are nested more than {} deep", deepestValue));
    return true;
  };
  try {
    Line line = Line::parse(text, limitDepth);
    if (!line.is_object()) throw Fault(fmt::format("the line is {}; an object is expected", Shown(line)));
    return line;
  } catch (const Line::parse_error& error) {
    throw Fault(fmt::format("not JSON from column {} on", error.byte));
  }
}

// The recorded answers to one request text, in order, and the index of the next one.
struct RecordedAnswers {
  std::vector<std::variant<std::string, Error>> answers;
  std::size_t next = 0;
};

class Recording {
 public:
  void ReadSession(const Line& line) {
    const auto version = WholeNumber<std::int16_t>(line, "exchange", 1);
    if (version != 1) {
      throw Fault(fmt::format("\"exchange\" is {}; this program reads recordings of version 1", version));
    }
    company = Text(line, "company");
    major = WholeNumber<std::int16_t>(line, "major", 0);
    minor = WholeNumber<std::int16_t>(line, "minor", 0);
  }

  void ReadAnswer(const Line& line) {
    RecordedAnswers& recorded = requests_[Text(line, "request")];
    const auto error = line.find("error");
    if (line.contains("response") || error == line.end()) {
      recorded.answers.emplace_back(Text(line, "response"));
      return;
    }
    if (!error->is_object()) {
      throw Fault(fmt::format("\"error\" is {}; an object is expected", Shown(*error)));
    }
    const auto number = WholeNumber<std::int32_t>(*error, "number", std::numeric_limits<std::int32_t>::min());
    recorded.answers.emplace_back(Error(number, Text(*error, "description")));
  }

  std::string NextAnswer(const std::string& request) {
    const auto found = requests_.find(request);
    if (found == requests_.end()) {
      throw Error(error_number::unspecified, "the recording holds no answer to the request " + request);
    }
    RecordedAnswers& recorded = found->second;
    const std::size_t last = recorded.answers.size() - 1;
    const auto& answer = recorded.answers[recorded.next < last ? recorded.next++ : last];
    if (const auto* refusal = std::get_if<Error>(&answer)) throw *refusal;
    return std::get<std::string>(answer);
  }

  std::string company;
  std::int16_t major = 0;
  std::int16_t minor = 0;

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
    return ticket == replayTicket ? recording_->company : std::string();
  }
  std::int16_t MajorVersion() override { return recording_->major; }
  std::int16_t MinorVersion() override { return recording_->minor; }

 private:
  std::shared_ptr<Recording> recording_;
};

class ReplayingFactory final : public RequestProcessorFactory {
 public:
  explicit ReplayingFactory(std::shared_ptr<Recording> recording) : recording_(std::move(recording)) {}
  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<ReplayingProcessor>(recording_);
  }

 private:
  std::shared_ptr<Recording> recording_;
};

}  // namespace

std::shared_ptr<RequestProcessorFactory> ReplayingProcessors(std::istream& recording,
                                                             const std::string& recordingName) {
  auto replayed = std::make_shared<Recording>();
  RecordingLines lines(recording, recordingName);
  for (std::string text; lines.Next(text);) {
    try {
      const Line line = ParsedLine(text);
      if (lines.Number() == 1) {
        replayed->ReadSession(line);
      } else {
        replayed->ReadAnswer(line);
      }
    } catch (const Error& error) {
      lines.Fail(error.Description());
    }
  }
  if (lines.Number() == 0) lines.Fail("the recording is empty");
  return std::make_shared<ReplayingFactory>(std::move(replayed));
}

}  // namespace krnqb
