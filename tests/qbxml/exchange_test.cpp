#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "fakes/request_processor.h"
#include "krnqb/error.h"
#include "limited_child.h"
#include "qbxml/exchange_recording.h"
#include "qbxml/exchange_replaying.h"
#include "qbxml/request_catalogue.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::ErrorOf;

// QuickBooks behind a recorder.
struct Recorded {
  std::shared_ptr<fakes::FakeQuickBooks> quickBooks = std::make_shared<fakes::FakeQuickBooks>();
  std::shared_ptr<fakes::Journal> journal = std::make_shared<fakes::Journal>();
  std::ostringstream lines;
  std::shared_ptr<RequestProcessorFactory> processors =
      RecordingProcessors(std::make_shared<fakes::FakeProcessorFactory>(quickBooks, journal),
                          std::make_shared<ExchangeRecorder>(lines));
};

std::shared_ptr<ReplayedExchange> Exchange(const std::string& lines) {
  return ReplayingProcessors(std::make_unique<std::istringstream>(lines), "recording");
}

std::unique_ptr<RequestProcessor> Replayed(const std::string& lines) {
  return Exchange(lines)->Create();
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

TEST(ExchangeRecorder, EscapesWhatJsonDoesNotAllowInTexts) {
  struct Case {
    std::string_view text;
    const char* json;
  };
  for (const auto& [text, json] : {
           Case{"", R"("")"},
           Case{"a/\"\\\n\r\t\x7F", "\"a/\\\"\\\\\\n\\r\\t\x7F\""},
           Case{"\b\f\x1F\n", R"("\b\f\u001f\n")"},
           Case{std::string_view("\0\x1B", 2), R"("\u0000\u001b")"},
           Case{"caf\u00E9 \u20AC \U0001F600", "\"caf\u00E9 \u20AC \U0001F600\""},
           Case{"\"\xFF\"", "\"\\\"\uFFFD\\\"\""},
       }) {
    EXPECT_EQ(RecordedAnswerLine(text, text),
              "{\"request\":" + std::string(json) + ",\"response\":" + json + "}\n");
  }
}

TEST(ExchangeRecorder, WritesWhatTheImportWasShownAndAskedFor) {
  const auto quickBooks = std::make_shared<fakes::FakeQuickBooks>();
  std::ostringstream lines;
  const ExchangeHeader header{.company = {},
                              .processor = {},
                              .presented = ProcessorVersion{2, 0},
                              .import = RecordedImport{.start = {2002, 7},
                                                       .product = QBKRN_COR,
                                                       .amounts = AmountsPath::Reports,
                                                       .expenses = true,
                                                       .income = false,
                                                       .pastPerformance = true,
                                                       .fiscalMonth = std::int16_t{4}}};
  RecordingProcessors(
      std::make_shared<fakes::FakeProcessorFactory>(quickBooks, std::make_shared<fakes::Journal>()),
      std::make_shared<ExchangeRecorder>(lines, header))
      ->Create()
      ->BeginSession("", 2);
  EXPECT_EQ(lines.str(), R"({"exchange":1,"company":"C:\\Companies\\Nursery.qbw","major":1,"minor":1,)"
                         R"("presented":{"major":2,"minor":0},"import":{"start":"2002-07","product":"cor",)"
                         R"("amounts":"reports","expenses":true,"income":false,"past_performance":true,)"
                         R"("fiscal_month":4}})"
                         "\n");
  const ExchangeHeader read = Exchange(lines.str())->Header();
  EXPECT_EQ(read.company, "C:\\Companies\\Nursery.qbw");
  EXPECT_EQ(read.processor, (ProcessorVersion{1, 1}));
  EXPECT_EQ(read.presented, header.presented);
  EXPECT_EQ(read.import, header.import);
}

TEST(ExchangeHeader, KeepsTheSpanOfARecordingOfWholeBooks) {
  const ExchangeHeader header{
      .company = "C:\\a.qbw", .processor = {6, 3}, .span = RecordedSpan{{2001, 1}, {2002, 12}, {2003, 1}}};
  const std::string line = ExchangeHeaderLine(header);
  EXPECT_EQ(line, R"({"exchange":1,"company":"C:\\a.qbw","major":6,"minor":3,)"
                  R"("span":{"from":"2001-01","to":"2002-12","plan_start":"2003-01"}})"
                  "\n");
  EXPECT_EQ(Exchange(line)->Header().span, header.span);
  EXPECT_EQ(FaultOf(R"({"exchange":1,"company":"","major":1,"minor":1,"span":{"from":"2001-01"}})"),
            "recording, line 1: \"to\" is missing; a month written YYYY-MM is expected");
  EXPECT_EQ(FaultOf(R"({"exchange":1,"company":"","major":1,"minor":1,"span":7})"),
            "recording, line 1: \"span\" is 7; an object is expected");
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

TEST(ReplayingProcessors, HaveTheProcessorsOwnVersionWhateverTheImportWasShown) {
  const auto exchange = Exchange(
      "{\"exchange\":1,\"company\":\"\",\"major\":16,\"minor\":1,\"presented\":{\"major\":2,\"minor\":0}}\n");
  EXPECT_EQ(exchange->Create()->MajorVersion(), 16);
  EXPECT_EQ(exchange->Create()->MinorVersion(), 1);
  EXPECT_EQ(exchange->Header().presented, (ProcessorVersion{2, 0}));
}

TEST(ReplayingProcessors, ReturnTheNthAnswerToTheNthRequestAndThenRepeatTheLast) {
  const auto processors = Exchange(std::string(session) +
                                   "{\"request\":\"a\",\"response\":\"1\"}\n"
                                   "{\"request\":\"b\",\"response\":\"x\"}\n"
                                   "{\"request\":\"a\",\"error\":{\"number\":5,\"description\":\"d\"}}\n"
                                   "{\"request\":\"a\",\"response\":\"3\"}\n");
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

// A recording that cannot be read again, like a pipe.
class PassingText final : public std::streambuf {
 public:
  explicit PassingText(std::string text) : text_(std::move(text)) {
    setg(text_.data(), text_.data(), text_.data() + text_.size());
  }

 private:
  std::string text_;
};

class PassingStream final : public std::istream {
 public:
  explicit PassingStream(std::string text) : std::istream(nullptr), buffer_(std::move(text)) {
    rdbuf(&buffer_);
  }

 private:
  PassingText buffer_;
};

TEST(ReplayingProcessors, AnswerFromARecordingThatCannotBeReadAgain) {
  const auto exchange =
      ReplayingProcessors(std::make_unique<PassingStream>(std::string(session) +
                                                          "{\"request\":\"a\",\"response\":\"\\u00e9\\n\"}\n"
                                                          "{\"request\":\"a\",\"response\":\"2\"}\n"),
                          "recording");
  EXPECT_EQ(exchange->Create()->ProcessRequest("", "a"), "\u00E9\n");
  EXPECT_EQ(exchange->Create()->ProcessRequest("", "a"), "2");
}

TEST(ReplayingProcessors, ReadAnAnswerWhenItIsAskedFor) {
  const std::string line = R"({"request":"a","response":"1"})";
  struct Case {
    const char* changed;
    std::string outcome;
  };
  for (const auto& [changed, outcome] : {
           Case{R"({"response":"<\"\u00e9>","x":{"y":1},"request":"a"})", "<\"\u00E9>"},
           Case{R"({"request":"b","response":"1"})", "recording has changed since it was opened"},
           Case{R"({"request":"a","response":"1"])", "recording has changed since it was opened"},
           Case{R"({"request":"a")", "recording has become shorter since it was opened"},
       }) {
    const std::size_t length = std::string_view(changed).size();
    const std::string original = line + std::string(std::max(length, line.size()) - line.size(), ' ');
    auto lines = std::make_unique<std::stringstream>(session + original);
    std::stringstream& recording = *lines;
    const auto processor = ReplayingProcessors(std::move(lines), "recording")->Create();
    EXPECT_EQ(processor->ProcessRequest("", "a"), "1");
    recording.str(session + std::string(changed));
    std::string answer;
    const auto error = ErrorOf([&] { answer = processor->ProcessRequest("", "a"); });
    EXPECT_EQ(error ? error->Description() : answer, outcome);
  }
}

TEST(ReplayingProcessors, ReadAnAnswerIntoTheMemoryOfAnother) {
  const std::string answer(5000, 'x');
  const auto processor = Replayed(std::string(session) + R"({"request":"a","response":")" + answer + "\"}\n" +
                                  R"({"request":"b","response":"1\n2"})" + "\n");
  for (const std::size_t size : {0U, 3U, 4000U, 100'000U}) {
    processor->UseAgain(std::string(size, 'y'));
    EXPECT_EQ(processor->ProcessRequest("", "a"), answer) << size;
    processor->UseAgain(std::string(size, 'y'));
    EXPECT_EQ(processor->ProcessRequest("", "b"), "1\n2") << size;
  }
}

TEST(ReplayingProcessors, NameTheRequestThatWasNotRecorded) {
  const auto refusal = [](const std::string& request) {
    return ErrorOf([&] { Replayed(session)->ProcessRequest("", request); });
  };
  const auto error = refusal("<Unheard/>");
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Number(), -2147467259);
  EXPECT_EQ(error->Description(), "the recording holds no answer to the request <Unheard/>");
  EXPECT_EQ(refusal(BuildRequest(4, {}, {}))->Description(),
            "the recording holds no answer to the request <AccountQueryRq requestID=\"4\">");
  EXPECT_EQ(refusal("<QBXMLMsgsRq")->Description(), "the recording holds no answer to the request ");
}

TEST(ReplayingProcessors, RememberTheFirstRequestThatWasNotRecorded) {
  const auto exchange = Exchange(std::string(session) + "{\"request\":\"a\",\"response\":\"1\"}\n");
  exchange->Create()->ProcessRequest("", "a");
  EXPECT_EQ(exchange->UnansweredRequest(), std::nullopt);
  for (const std::string request : {"b", "c"}) {
    EXPECT_TRUE(ErrorOf([&] { exchange->Create()->ProcessRequest("", request); }));
  }
  EXPECT_EQ(exchange->UnansweredRequest(), "b");
}

TEST(ReplayingProcessors, SayThatAnotherFileIsNotARecording) {
  struct Case {
    const char* text;
    const char* reason;
  };
  for (const auto& [text, reason] : {
           Case{"", "it is empty"},
           Case{"Dear reader,\n", "line 1 is not JSON"},
           Case{"{\n", "line 1 is not JSON"},
           Case{"\n{}", "line 1 is not JSON"},
           Case{"SQLite format 3", "line 1 is not JSON"},
           Case{"\xFF\xFE{", "line 1 is not JSON"},
           Case{"[1]", "line 1 is an array"},
           Case{"\"text\"", "line 1 is \"text\""},
           Case{R"({"kind":"skipped","amount":"5"})", "line 1 has no \"exchange\""},
           Case{R"({"request":"a","response":"1"})", "line 1 has no \"exchange\""},
           Case{R"({"company":"","major":1,"minor":1})", "line 1 has no \"exchange\""},
       }) {
    EXPECT_EQ(FaultOf(text), std::string("recording is not a recording: ") + reason) << text;
  }
}

TEST(ReplayingProcessors, NameTheInvalidLineOfARecording) {
  EXPECT_EQ(FaultOf(std::string(session) + "\n"), "recording, line 2: not JSON from column 1 on");
  EXPECT_EQ(FaultOf(std::string(session) + "{\"request\":\"a\",\"response\":\"1\"}\n["),
            "recording, line 3: not JSON from column 2 on");
  EXPECT_EQ(FaultOf(std::string(session) + "[1]\n"),
            "recording, line 2: the line is an array; an object is expected");
  EXPECT_EQ(FaultOf(std::string(session) + "{\"request\":1e999}\n"),
            "recording, line 2: a number is out of range");
}

TEST(ReplayingProcessors, PassOverAByteOrderMarkAndMembersThatNothingReads) {
  const auto processor = Replayed("\xEF\xBB\xBF" + std::string(session) +
                                  " { \"request\" : \"x\", \"y\":[1,null], \"request\":\"a\", "
                                  "\"response\":\"1\", \"response\":\"2\" } \r\n");
  EXPECT_EQ(processor->ProcessRequest("", "a"), "2") << "the last member of a name counts";
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
                R"("major" is "1"; a whole number from 0 to 32767 is expected)"},
           Case{R"({"exchange":1,"company":"","major":{"a":1},"minor":1})",
                "\"major\" is an object; a whole number from 0 to 32767 is expected"},
           Case{R"({"exchange":1,"company":7,"major":1,"minor":1})", "\"company\" is 7; a text is expected"},
           Case{R"({"exchange":1,"major":1,"minor":1})", "\"company\" is missing; a text is expected"},
           Case{R"({"exchange":1e999})", "a number is out of range"},
       }) {
    EXPECT_EQ(FaultOf(std::string(line) + "\n"), std::string("recording, line 1: ") + fault) << line;
  }
  EXPECT_EQ(FaultOf(R"({"exchange":1,"company":"","major":0,"minor":32767})"), "");
}

TEST(ReplayingProcessors, SayWhatIsExpectedOfTheVersionThatTheImportWasShown) {
  struct Case {
    const char* version;
    const char* fault;
  };
  for (const auto& [version, fault] : {
           Case{"2", "\"presented\" is 2; an object is expected"},
           Case{R"("2.0")", R"("presented" is "2.0"; an object is expected)"},
           Case{"null", "\"presented\" is null; an object is expected"},
           Case{R"({"major":2})", "\"minor\" is missing; a whole number from 0 to 32767 is expected"},
           Case{R"({"major":-2,"minor":0})", "\"major\" is -2; a whole number from 0 to 32767 is expected"},
           Case{R"({"major":2,"minor":0.5})", "\"minor\" is 0.5; a whole number from 0 to 32767 is expected"},
       }) {
    EXPECT_EQ(FaultOf(R"({"exchange":1,"company":"","major":1,"minor":1,"presented":)" +
                      std::string(version) + "}\n"),
              std::string("recording, line 1: ") + fault)
        << version;
  }
}

TEST(ReplayingProcessors, SayWhatIsExpectedOfTheImport) {
  struct Case {
    const char* member;
    const char* malformed;  // null: the member is missing
    const char* fault;
  };
  const nlohmann::json import = {{"start", "2002-01"}, {"product", "ald"}, {"amounts", "none"},
                                 {"expenses", true},   {"income", false},  {"past_performance", false}};
  const auto faultWith = [](const nlohmann::json& edited) {
    return FaultOf(R"({"exchange":1,"company":"","major":1,"minor":1,"import":)" + edited.dump() + "}\n");
  };
  EXPECT_EQ(faultWith(import), "");
  EXPECT_EQ(faultWith("ald"), "recording, line 1: \"import\" is \"ald\"; an object is expected");
  for (const auto& [member, malformed, fault] : {
           Case{"start", nullptr, "\"start\" is missing; a month written YYYY-MM is expected"},
           Case{"start", "2002", "\"start\" is 2002; a month written YYYY-MM is expected"},
           Case{"start", R"("2002-13")", R"("start" is "2002-13"; a month written YYYY-MM is expected)"},
           Case{"start", R"("2002-1")", R"("start" is "2002-1"; a month written YYYY-MM is expected)"},
           Case{"start", R"("2002--1")", R"("start" is "2002--1"; a month written YYYY-MM is expected)"},
           Case{"start", R"("-200-01")", R"("start" is "-200-01"; a month written YYYY-MM is expected)"},
           Case{"product", nullptr, R"("product" is missing; "ald", "bri" or "cor" is expected)"},
           Case{"product", R"("ALD")", R"("product" is "ALD"; "ald", "bri" or "cor" is expected)"},
           Case{"amounts", nullptr,
                R"("amounts" is missing; "none", "transactions" or "reports" is expected)"},
           Case{"amounts", "1", R"("amounts" is 1; "none", "transactions" or "reports" is expected)"},
           Case{"expenses", nullptr, "\"expenses\" is missing; true or false is expected"},
           Case{"expenses", "1", "\"expenses\" is 1; true or false is expected"},
           Case{"income", R"("yes")", R"("income" is "yes"; true or false is expected)"},
           Case{"past_performance", "null", "\"past_performance\" is null; true or false is expected"},
           Case{"fiscal_month", "0", "\"fiscal_month\" is 0; a whole number from 1 to 12 is expected"},
           Case{"fiscal_month", "13", "\"fiscal_month\" is 13; a whole number from 1 to 12 is expected"},
       }) {
    nlohmann::json edited = import;
    if (malformed == nullptr) {
      edited.erase(member);
    } else {
      edited[member] = nlohmann::json::parse(malformed);
    }
    EXPECT_EQ(faultWith(edited), std::string("recording, line 1: ") + fault);
  }
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
  for (const std::string& line : {nested, "{\"request\":" + nested, R"({"request":"a","x":)" + nested}) {
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
