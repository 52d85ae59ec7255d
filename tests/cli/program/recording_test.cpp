#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>

#include "cli/program/child_process.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ChildProcess;
using tests::ReadText;
using tests::Words;
using tests::Workplace;

Words RecordArguments(const Workplace& place, const std::string& out) {
  return {"record", "--company", place / "nursery.qbw", "--plan-start", "2003-01", "--from", "1998-01",
          "--out",  place / out};
}

TEST(KilledRecording, GoesOnToTheSameRecording) {
  const Workplace place;
  place.NurseryYear("2.0");
  const auto begun = std::chrono::steady_clock::now();
  ASSERT_EQ(ChildProcess(RecordArguments(place, "whole.jsonl")).Wait(), 0);
  const auto duration =
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begun);
  const std::string whole = ReadText(place / "whole.jsonl");

  std::minstd_rand random(20030115);
  std::uniform_int_distribution<unsigned> moment(0, static_cast<unsigned>(duration.count()));
  const std::string out = place / "books.jsonl";
  for (int kill = 0; kill < 10; ++kill) {
    if (std::filesystem::exists(out)) {
      EXPECT_EQ(ReadText(out), whole);
      std::filesystem::remove(out);
    }
    ChildProcess recording(RecordArguments(place, "books.jsonl"));
    ::usleep(moment(random) / 3);
    recording.Signal(SIGKILL);
    recording.Wait();
  }
  if (!std::filesystem::exists(out)) {
    ASSERT_EQ(ChildProcess(RecordArguments(place, "books.jsonl")).Wait(), 0);
  }
  EXPECT_EQ(ReadText(out), whole);
  EXPECT_FALSE(std::filesystem::exists(out + ".part"));
}

TEST(InterruptedRecording, KeepsItsAnswersAndSaysHowToGoOn) {
  const Workplace place;
  place.NurseryYear("2.0");
  const std::string out = place / "books.jsonl";
  ChildProcess recording(RecordArguments(place, "books.jsonl"));
  EXPECT_EQ(recording.ReadLine().find("Recording January 1998 to December 2002 for plans from January 2003"),
            0U);
  recording.Signal(SIGINT);
  EXPECT_EQ(recording.Wait(), 130);
  const std::string errors = recording.Errors();
  EXPECT_EQ(errors.find("krnqb: recording interrupted: "), 0U) << errors;
  EXPECT_NE(errors.find(std::filesystem::exists(out + ".part")
                            ? out + ".part keeps the answers so far; run the same command again to go on\n"
                            : "nothing was recorded\n"),
            std::string::npos)
      << errors;
  EXPECT_FALSE(std::filesystem::exists(out));
  ASSERT_EQ(ChildProcess(RecordArguments(place, "books.jsonl")).Wait(), 0);
  ASSERT_EQ(ChildProcess(RecordArguments(place, "whole.jsonl")).Wait(), 0);
  EXPECT_EQ(ReadText(out), ReadText(place / "whole.jsonl"));
}

}  // namespace
}  // namespace krnqb::cli
