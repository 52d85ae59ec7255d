#include "qbxml/closing_processor.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "krnqb/error.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using Calls = std::vector<std::string>;

// Records its calls, and refuses those whose text begins as one in `refused`.
class RecordingProcessor final : public ClosableProcessor {
 public:
  RecordingProcessor(Calls& calls, Calls refused) : calls_(calls), refused_(std::move(refused)) {}
  RecordingProcessor(const RecordingProcessor&) = delete;
  RecordingProcessor& operator=(const RecordingProcessor&) = delete;
  ~RecordingProcessor() override { calls_.emplace_back("released"); }

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    Note("request " + std::string(ticket) + " " + std::string(request));
    return "answer";
  }
  void OpenConnection(std::string_view identifier, std::string_view name) override {
    Note("connection " + std::string(identifier) + " " + std::string(name));
  }
  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    Note("session " + std::string(companyFile) + " " + std::to_string(fileMode));
    return "T" + std::to_string(++sessions_);
  }
  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return "company of " + std::string(ticket);
  }
  std::int16_t MajorVersion() override { return 6; }
  std::int16_t MinorVersion() override { return 3; }
  void EndSession(std::string_view ticket) override { Note("end " + std::string(ticket)); }
  void CloseConnection() override { Note("close"); }

 private:
  void Note(const std::string& call) {
    calls_.push_back(call);
    for (const std::string& refused : refused_) {
      if (call.starts_with(refused)) throw Error(-2147220480, "refused");
    }
  }

  Calls& calls_;
  Calls refused_;
  int sessions_ = 0;
};

// Returns the calls of a whole use, with errors on the way ignored as the session ignores them.
Calls CallsOf(const Calls& refused, int sessions = 1) {
  Calls calls;
  auto processor = ClosingProcessor(std::make_unique<RecordingProcessor>(calls, refused));
  const auto use = [&] {
    processor->OpenConnection("id", "name");
    std::string ticket;
    for (int session = 0; session < sessions; ++session) ticket = processor->BeginSession("a.qbw", 2);
    EXPECT_EQ(processor->ProcessRequest(ticket, "r"), "answer");
  };
  if (refused.empty() || refused.front() == "end" || refused.front() == "close") {
    use();
  } else {
    EXPECT_EQ(tests::NumberThrownBy(use), -2147220480);
  }
  processor.reset();
  return calls;
}

TEST(ClosingProcessor, EndsTheSessionAndClosesTheConnectionWhenItIsReleased) {
  EXPECT_EQ(CallsOf({}),
            (Calls{"connection id name", "session a.qbw 2", "request T1 r", "end T1", "close", "released"}));
}

TEST(ClosingProcessor, DoesSoAfterARefusedRequest) {
  EXPECT_EQ(CallsOf({"request"}),
            (Calls{"connection id name", "session a.qbw 2", "request T1 r", "end T1", "close", "released"}));
}

TEST(ClosingProcessor, EndsOnlyWhatHasBegun) {
  EXPECT_EQ(CallsOf({"session"}), (Calls{"connection id name", "session a.qbw 2", "close", "released"}));
  EXPECT_EQ(CallsOf({"connection"}), (Calls{"connection id name", "released"}));
}

TEST(ClosingProcessor, ClosesTheConnectionThoughASessionDoesNotEnd) {
  EXPECT_EQ(CallsOf({"end"}),
            (Calls{"connection id name", "session a.qbw 2", "request T1 r", "end T1", "close", "released"}));
  EXPECT_EQ(CallsOf({"close"}).back(), "released");
}

TEST(ClosingProcessor, EndsEverySession) {
  EXPECT_EQ(CallsOf({}, 2), (Calls{"connection id name", "session a.qbw 2", "session a.qbw 2", "request T2 r",
                                   "end T1", "end T2", "close", "released"}));
}

TEST(ClosingProcessor, ForwardsTheCompanyAndTheVersions) {
  Calls calls;
  const auto processor = ClosingProcessor(std::make_unique<RecordingProcessor>(calls, Calls{}));
  EXPECT_EQ(processor->GetCurrentCompanyFileName("T"), "company of T");
  EXPECT_EQ(processor->MajorVersion(), 6);
  EXPECT_EQ(processor->MinorVersion(), 3);
}

}  // namespace
}  // namespace krnqb
