#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "fakes/request_processor.h"
#include "krnqb/error.h"
#include "limited_child.h"
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
  EXPECT_NE(FaultOf(std::string(session) + "{\"request\":\"a\"}\n").find("recording, line 2"),
            std::string::npos);
  EXPECT_NE(FaultOf(std::string(session) + "{\"request\":\"a\",\"response\":\"1\"}\n[").find("line 3"),
            std::string::npos);
}

TEST(ReplayingProcessors, SayWhatIsExpectedOfTheFirstLine) {
  struct Case {
    const char* line;
    const char* fault;
  };
  for (const auto& [line, fault] : {
           Case{R"({"exchange":2,"company":"","major":1,"minor":1})",
                "\"exchange\" is 2; this program reads recordings of version 1"},
           Case{R"({"exchange":1.0,"company":"","major":1,"minor":1})",
                "\"exchange\" is 1.0; a whole number from 1 to 32767 is expected"},
           Case{R"({"exchange":true,"company":"","major":1,"minor":1})",
                "\"exchange\" is true; a whole number from 1 to 32767 is expected"},
           Case{R"({"company":"","major":1,"minor":1})",
                "\"exchange\" is missing; a whole number from 1 to 32767 is expected"},
           Case{R"({"exchange":1,"company":"","major":1.9,"minor":1})",
                "\"major\" is 1.9; a whole number from 0 to 32767 is expected"},
           Case{R"({"exchange":1,"company":"","major":2e32,"minor":1})",
                "\"major\" is 2e+32; a whole number from 0 to 32767 is expected"},
           Case{R"({"exchange":1,"company":"","major":1,"minor":99999})",
                "\"minor\" is 99999; a whole number from 0 to 32767 is expected"},
           Case{R"({"exchange":1,"company":"","major":18446744073709551615,"minor":1})",
                "\"major\" is 18446744073709551615; a whole number from 0 to 32767 is expected"},
           Case{R"({"exchange":1,"company":"","major":1,"minor":-1})",
                "\"minor\" is -1; a whole number from 0 to 32767 is expected"},
           Case{R"({"exchange":1,"company":"","major":"1","minor":1})",
                "\"major\" is \"1\"; a whole number from 0 to 32767 is expected"},
           Case{R"({"exchange":1,"company":"","major":{"a":1},"minor":1})",
                "\"major\" is an object; a whole number from 0 to 32767 is expected"},
           Case{R"({"exchange":1,"company":7,"major":1,"minor":1})", "\"company\" is 7; a text is expected"},
           Case{R"({"exchange":1,"major":1,"minor":1})", "\"company\" is missing; a text is expected"},
           Case{R"({"request":"a","response":"1"})",
                "\"exchange\" is missing; a whole number from 1 to 32767 is expected"},
           Case{"[1]", "the line is an array; an object is expected"},
           Case{"nonsense", "not JSON from column 2 on"},
       }) {
    EXPECT_EQ(FaultOf(std::string(line) + "\n"), std::string("recording, line 1: ") + fault) << line;
  }
  EXPECT_EQ(FaultOf(R"({"exchange":1,"company":"","major":0,"minor":32767})"), "");
}

TEST(ReplayingProcessors, SayWhatIsExpectedOfALaterLine) {
  struct Case {
    const char* line;
    const char* fault;
  };
  for (const auto& [line, fault] : {
           Case{R"({"response":"1"})", "\"request\" is missing; a text is expected"},
           Case{R"({"request":"a"})", "\"response\" is missing; a text is expected"},
           Case{R"({"request":"a","response":null})", "\"response\" is null; a text is expected"},
           Case{R"({"request":"a","error":5})", "\"error\" is 5; an object is expected"},
           Case{R"({"request":"a","error":{"description":"d"}})",
                "\"number\" is missing; a whole number from -2147483648 to 2147483647 is expected"},
           Case{R"({"request":"a","error":{"number":2147483648,"description":"d"}})",
                "\"number\" is 2147483648; a whole number from -2147483648 to 2147483647 is expected"},
           Case{R"({"request":"a","error":{"number":5}})", "\"description\" is missing; a text is expected"},
           Case{R"({"request":"a","response":[[[1]]]})", "values are nested more than 2 deep"},
       }) {
    EXPECT_EQ(FaultOf(std::string(session) + line + "\n"), std::string("recording, line 2: ") + fault)
        << line;
  }
  EXPECT_EQ(
      FaultOf(std::string(session) + R"({"request":"a","error":{"number":-2147483648,"description":"d"}})"),
      "");
}

TEST(ReplayingProcessors, NameAnEndlessValueByItsBeginning) {
  const std::string fault =
      FaultOf(R"({"exchange":1,"company":"","minor":1,"major":")" + std::string(5000, 'x') + "\"}");
  EXPECT_EQ(fault, "recording, line 1: \"major\" is \"" + std::string(40, 'x') +
                       "...; a whole number from 0 to 32767 is expected");
}

TEST(ReplayingProcessors, ReadNestedValuesWithinTheirLimits) {
  const std::string nested = std::string(1'000'000, '[');
  for (const std::string& line : {nested, "{\"request\":" + nested, "{\"request\":\"a\",\"x\":" + nested}) {
    EXPECT_TRUE(tests::StaysWithinLimits(
        line.size(), [&] { return FaultOf(std::string(session) + line).find("recording, line 2: ") == 0; }));
  }
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
