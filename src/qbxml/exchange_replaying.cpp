#include "qbxml/exchange_replaying.h"

#include <fmt/format.h>

#include <cstdint>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <variant>
#include <vector>

#include "krnqb/error.h"

namespace krnqb {
namespace {

using Line = nlohmann::json;

constexpr std::string_view replayTicket = "replay";

// The recorded answers to one request text, in order, and the index of the next one.
struct RecordedAnswers {
  std::vector<std::variant<std::string, Error>> answers;
  std::size_t next = 0;
};

class Recording {
 public:
  void ReadSession(const Line& line) {
    if (line.at("exchange").get<int>() != 1)
      throw Error(error_number::unspecified, "the exchange's version is not 1");
    company = line.at("company").get<std::string>();
    major = line.at("major").get<std::int16_t>();
    minor = line.at("minor").get<std::int16_t>();
  }

  void ReadAnswer(const Line& line) {
    RecordedAnswers& recorded = requests_[line.at("request").get<std::string>()];
    if (line.contains("response")) {
      recorded.answers.emplace_back(line.at("response").get<std::string>());
    } else {
      const Line& error = line.at("error");
      recorded.answers.emplace_back(
          Error(error.at("number").get<std::int32_t>(), error.at("description").get<std::string>()));
    }
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
  std::string text;
  std::size_t number = 0;
  const auto fail = [&](std::string_view fault) {
    throw Error(error_number::unspecified, fmt::format("{}, line {}: {}", recordingName, number, fault));
  };
  while (std::getline(recording, text)) {
    ++number;
    try {
      const Line line = Line::parse(text);
      if (number == 1) {
        replayed->ReadSession(line);
      } else {
        replayed->ReadAnswer(line);
      }
    } catch (const Line::exception& error) {
      fail(error.what());
    } catch (const Error& error) {
      fail(error.Description());
    }
  }
  if (number == 0) fail("the recording is empty");
  return std::make_shared<ReplayingFactory>(std::move(replayed));
}

}  // namespace krnqb
