#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "fakes/request_processor.h"
#include "krnqb/error.h"
#include "qbxml/exchange_recording.h"
#include "qbxml/exchange_replaying.h"

namespace krnqb {
namespace {

// QuickBooks behind a recorder.
struct Recorded {
  std::shared_ptr<fakes::FakeQuickBooks> quickBooks = std::make_shared<fakes::FakeQuickBooks>();
  std::shared_ptr<fakes::Journal> journal = std::make_shared<fakes::Journal>();
  std::ostringstream lines;
  std::shared_ptr<RequestProcessorFactory> processors =
      RecordingProcessors(std::make_shared<fakes::FakeProcessorFactory>(quickBooks, journal),
                          std::make_shared<ExchangeRecorder>(lines));
};

std::unique_ptr<RequestProcessor> Replayed(const std::string& lines) {
  std::istringstream input(lines);
  return ReplayingProcessors(input, "recording")->Create();
}

std::string FaultOf(const std::string& lines) {
  try {
    Replayed(lines);
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), -2147467259);
    return error.Description();
  }
  return {};
}

constexpr auto session = "{\"exchange\":1,\"company\":\"C:\\\\a.qbw\",\"major\":2,\"minor\":0}\n";

TEST(ExchangeRecorder, WritesTheSessionAndEachAnswerAsALine) {
  Recorded recorded;
  recorded.quickBooks->answers["4"] = "<QBXML>\r\n\"é\"</QBXML>\n";
  const auto processor = recorded.processors->Create();
  const std::string ticket = processor->BeginSession("C:\\a.qbw", 2);
  EXPECT_EQ(processor->ProcessRequest(ticket, "<AccountQueryRq requestID=\"4\">"),
            "<QBXML>\r\n\"é\"</QBXML>\n");
  EXPECT_EQ(recorded.lines.str(),
            "{\"exchange\":1,\"company\":\"C:\\\\Companies\\\\Nursery.qbw\",\"major\":1,\"minor\":1}\n"
            "{\"request\":\"<AccountQueryRq "
            "requestID=\\\"4\\\">\",\"response\":\"<QBXML>\\r\\n\\\"é\\\"</QBXML>\\n\"}\n");
}

TEST(ExchangeRecorder, WritesARefusedRequestWithItsErrorAndPassesItOn) {
  Recorded recorded;
  recorded.journal->Fail("ProcessRequest 4", Error(-2147220480, "could not be parsed"));
  const auto processor = recorded.processors->Create();
  const std::string ticket = processor->BeginSession("", 2);
  EXPECT_THROW(processor->ProcessRequest(ticket, "requestID=\"4\""), Error);
  const std::string text = recorded.lines.str();
  EXPECT_EQ(text.substr(text.find('\n') + 1),
            "{\"request\":\"requestID=\\\"4\\\"\",\"error\":{\"number\":-2147220480,\"description\":"
            "\"could not be parsed\"}}\n");
}

TEST(ExchangeRecorder, WritesTheSessionOnceForSeveralSessions) {
  Recorded recorded;
  for (int count = 0; count < 3; ++count) recorded.processors->Create()->BeginSession("", 2);
  const std::string text = recorded.lines.str();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
}

TEST(ExchangeRecorder, ReplacesBytesThatAreNotUtf8AndChangesNoAnswer) {
  Recorded recorded;
  recorded.quickBooks->company = "caf\xE9.qbw";
  recorded.quickBooks->answers["4"] = "<QBXML>\xFF</QBXML>";
  const auto processor = recorded.processors->Create();
  const std::string ticket = processor->BeginSession("caf\xE9.qbw", 2);
  EXPECT_EQ(processor->ProcessRequest(ticket, "requestID=\"4\""), "<QBXML>\xFF</QBXML>");
  EXPECT_EQ(recorded.lines.str(),
            "{\"exchange\":1,\"company\":\"caf\uFFFD.qbw\",\"major\":1,\"minor\":1}\n"
            "{\"request\":\"requestID=\\\"4\\\"\",\"response\":\"<QBXML>\uFFFD</QBXML>\"}\n");
}

TEST(ReplayingProcessors, AnswerAsRecorded) {
  const auto processor = Replayed(std::string(session) + "{\"request\":\"a\",\"response\":\"1\"}\n");
  processor->OpenConnection("id", "name");
  const std::string ticket = processor->BeginSession("", 2);
  EXPECT_EQ(processor->GetCurrentCompanyFileName(ticket), "C:\\a.qbw");
  EXPECT_EQ(processor->MajorVersion(), 2);
  EXPECT_EQ(processor->MinorVersion(), 0);
  EXPECT_EQ(processor->ProcessRequest(ticket, "a"), "1");
}

TEST(ReplayingProcessors, ReturnTheNthAnswerToTheNthRequestAndThenRepeatTheLast) {
  std::istringstream input(std::string(session) +
                           "{\"request\":\"a\",\"response\":\"1\"}\n"
                           "{\"request\":\"b\",\"response\":\"x\"}\n"
                           "{\"request\":\"a\",\"error\":{\"number\":5,\"description\":\"d\"}}\n"
                           "{\"request\":\"a\",\"response\":\"3\"}\n");
  const auto processors = ReplayingProcessors(input, "recording");
  EXPECT_EQ(processors->Create()->ProcessRequest("", "a"), "1");
  const auto later = processors->Create();
  try {
    later->ProcessRequest("", "a");
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), 5);
    EXPECT_EQ(error.Description(), "d");
  }
  EXPECT_EQ(later->ProcessRequest("", "a"), "3");
  EXPECT_EQ(later->ProcessRequest("", "a"), "3");
  EXPECT_EQ(later->ProcessRequest("", "b"), "x");
}

TEST(ReplayingProcessors, NameTheRequestThatWasNotRecorded) {
  const auto processor = Replayed(session);
  try {
    processor->ProcessRequest("", "<Unheard/>");
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), -2147467259);
    EXPECT_NE(error.Description().find("<Unheard/>"), std::string::npos);
  }
}

TEST(ReplayingProcessors, NameTheInvalidLineOfARecording) {
  EXPECT_NE(FaultOf("").find("empty"), std::string::npos);
  EXPECT_NE(FaultOf("nonsense\n").find("recording, line 1"), std::string::npos);
  EXPECT_NE(FaultOf("{\"exchange\":2,\"company\":\"\",\"major\":1,\"minor\":1}\n").find("version is not 1"),
            std::string::npos);
  EXPECT_NE(FaultOf(std::string(session) + "{\"request\":\"a\"}\n").find("recording, line 2"),
            std::string::npos);
  EXPECT_NE(FaultOf(std::string(session) + "{\"request\":\"a\",\"response\":\"1\"}\n[").find("line 3"),
            std::string::npos);
}

TEST(Recording, ReplaysTheRecordedExchange) {
  Recorded recorded;
  recorded.quickBooks->answers["1"] = "<QBXML>one</QBXML>";
  const auto processor = recorded.processors->Create();
  const std::string ticket = processor->BeginSession("", 2);
  const std::string answer = processor->ProcessRequest(ticket, "requestID=\"1\"");
  const auto replayed = Replayed(recorded.lines.str());
  EXPECT_EQ(replayed->ProcessRequest(replayed->BeginSession("", 2), "requestID=\"1\""), answer);
}

}  // namespace
}  // namespace krnqb
