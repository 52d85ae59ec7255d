#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "cli/living_quickbooks.h"
#include "files/operations.h"

namespace krnqb::cli {
namespace {

using tests::LivingQuickBooks;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;
using tests::WriteText;

// A recording of a QuickBooks that is closed after ten requests.
class InterruptedRecording : public testing::Test {
 protected:
  void SetUp() override {
    quickBooks->openCompany = place.NurseryYear("1.1");
    quickBooks->lastRequest = 10;
    run = Record();
    quickBooks->lastRequest = ~0U;
    asked = quickBooks->requests;
    quickBooks->requests.clear();
  }
  ProgramRun Record(const Words& more = {}) const {
    return RunProgram(With({"record", "--quickbooks", "--plan-start", "2003-01", "--out", out}, more),
                      With(quickBooks));
  }
  std::string Whole() const {
    const std::string whole = place / "whole.jsonl";
    EXPECT_EQ(RunProgram({"record", "--quickbooks", "--plan-start", "2003-01", "--out", whole, "--quiet"},
                         With(quickBooks))
                  .code,
              0);
    return ReadText(whole);
  }

  const Workplace place;
  const std::string out = place / "books.jsonl";
  const std::string part = out + ".part";
  const std::shared_ptr<LivingQuickBooks> quickBooks = std::make_shared<LivingQuickBooks>();
  ProgramRun run;
  std::vector<std::string> asked;
};

TEST_F(InterruptedRecording, SaysHowToGoOn) {
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(
      run.err,
      "krnqb: recording failed: QuickBooks was closed; fix the cause and run the same command again to go "
      "on\n");
  EXPECT_FALSE(std::filesystem::exists(out));
  EXPECT_TRUE(std::filesystem::exists(part));
}

TEST_F(InterruptedRecording, GoesOnWithoutAskingTwice) {
  const ProgramRun again = Record();
  ASSERT_EQ(again.code, 0) << again.err;
  EXPECT_NE(again.out.find("Going on with " + part + ", which has 10 answers.\n"), std::string::npos)
      << again.out;
  EXPECT_FALSE(std::filesystem::exists(part));
  for (const std::string& request : quickBooks->requests)
    EXPECT_EQ(std::count(asked.begin(), asked.end(), request), 0) << request;
  EXPECT_EQ(ReadText(out), Whole());
}

TEST_F(InterruptedRecording, DropsAnAnswerThatWasCutOff) {
  const std::string text = ReadText(part);
  WriteText(part, text.substr(0, text.size() - 5));
  const ProgramRun again = Record();
  ASSERT_EQ(again.code, 0) << again.err;
  EXPECT_EQ(again.err,
            "krnqb: warning: " + part + " ended in the middle of an answer, which is asked for again\n");
  EXPECT_EQ(quickBooks->requests.front(), asked.back());
  EXPECT_EQ(ReadText(out), Whole());
}

TEST_F(InterruptedRecording, BeginsAnewIfNotEvenTheFirstLineIsWhole) {
  WriteText(part, "{\"exchange\":1,");
  ASSERT_EQ(Record().code, 0);
  EXPECT_EQ(ReadText(out), Whole());
}

TEST_F(InterruptedRecording, IsNotMixedWithAnother) {
  const std::string text = ReadText(part);
  const ProgramRun other = Record({"--from", "2001-01"});
  EXPECT_EQ(other.code, 1);
  EXPECT_EQ(other.err,
            "krnqb: recording failed: " + part +
                " is another recording, of January 2002 to December 2002 for plans from January 2003 (" +
                quickBooks->openCompany +
                ", qbXML 1.1); asked for is January 2001 to December 2002 for plans from January 2003 (" +
                quickBooks->openCompany + ", qbXML 1.1); remove it, or give another --out\n");
  EXPECT_EQ(ReadText(part), text);
  EXPECT_TRUE(quickBooks->requests.empty());
}

TEST_F(InterruptedRecording, IsRefusedIfItIsDamagedInTheMiddle) {
  std::string text = ReadText(part);
  text.insert(text.find('\n') + 5, "\"");
  WriteText(part, text);
  const ProgramRun again = Record();
  EXPECT_EQ(again.code, 1);
  EXPECT_NE(again.err.find(part + ", line 2: not JSON"), std::string::npos) << again.err;
  EXPECT_NE(again.err.find("remove " + part + ", or give another --out"), std::string::npos) << again.err;
  EXPECT_EQ(ReadText(part), text);
}

TEST_F(InterruptedRecording, IsReadableByItsOwnerAlone) {
  EXPECT_EQ(std::filesystem::status(part).permissions(), std::filesystem::perms(0600));
  ASSERT_EQ(Record().code, 0);
  EXPECT_EQ(std::filesystem::status(out).permissions(), std::filesystem::perms(0600));
}

TEST_F(InterruptedRecording, IsNotWrittenByTwoAtOnce) {
  files::SystemFileOperations operations;
  files::FileDescriptor claim;
  ASSERT_FALSE(operations.OpenLockFile(part, claim));
  ASSERT_FALSE(claim.Lock());
  const ProgramRun again = Record();
  EXPECT_EQ(again.code, 1);
  EXPECT_EQ(again.err, "krnqb: recording failed: " + part +
                           " is being written by another recording; wait until that has ended\n");
}

}  // namespace
}  // namespace krnqb::cli
