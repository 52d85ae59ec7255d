#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fstream>

#include "cli/program/child_process.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ChildProcess;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;

// An import that already watches for interrupts and waits for the recording it reads.
class WaitingImport : public testing::Test {
 protected:
  void SetUp() override {
    place.Nursery();
    ASSERT_EQ(RunProgram(place.ImportArguments("ald.kpf",
                                               {"--expenses", "--dry-run", "--record", place / "recording"}))
                  .code,
              0);
    ASSERT_EQ(::mkfifo((place / "fifo").c_str(), 0600), 0);
    before = ReadText(place / "ald.kpf");
  }

  std::vector<std::string> Arguments() const {
    return {"import", "--replay", place / "fifo", "--plan", place / "ald.kpf", "--expenses"};
  }

  const Workplace place;
  std::string before;
};

TEST_F(WaitingImport, ExitsWith130AndWritesNothingIfInterrupted) {
  ChildProcess import(Arguments());
  {
    std::ofstream recording(place / "fifo");
    import.Signal(SIGINT);
    recording << ReadText(place / "recording");
  }
  EXPECT_EQ(import.Wait(), 130);
  EXPECT_EQ(import.Errors(), "krnqb: import interrupted: stopped on request; nothing was written\n");
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
  EXPECT_FALSE(std::filesystem::exists(place / "ald.kpf.bak"));
}

TEST_F(WaitingImport, ContinuesIfNotInterrupted) {
  ChildProcess import(Arguments());
  { std::ofstream(place / "fifo") << ReadText(place / "recording"); }
  EXPECT_EQ(import.Wait(), 0);
  EXPECT_NE(ReadText(place / "ald.kpf"), before);
}

TEST_F(WaitingImport, HeedsEverySignalWhileItWaitsForAPipeToBeWritten) {
  struct Case {
    int signal;
    int code;
  };
  for (const auto& [signal, code] : {Case{SIGINT, 130}, Case{SIGTERM, 143}, Case{SIGHUP, 129}}) {
    ChildProcess import(Arguments());
    // Opening waits until the import has opened the pipe, and so watches for signals.
    const std::ofstream recording(place / "fifo");
    import.Signal(signal);
    EXPECT_EQ(import.Wait(), code);
    EXPECT_NE(import.Errors().find("krnqb: import interrupted: "), std::string::npos);
    EXPECT_EQ(ReadText(place / "ald.kpf"), before);
  }
}

TEST_F(WaitingImport, HeedsSignalsWhileNobodyOpensThePipe) {
  ChildProcess import(Arguments());
  ::usleep(200000);  // until it waits; if it does not yet, the default action has the same exit status
  import.Signal(SIGTERM);
  const int status = import.Wait();
  EXPECT_TRUE(status == 143 || status == -SIGTERM) << status;
}

TEST_F(WaitingImport, HeedsSignalsWhileNobodyReadsItsRecording) {
  ChildProcess import(place.ImportArguments("ald.kpf", {"--expenses", "--record", place / "fifo"}));
  EXPECT_EQ(import.ReadLine().find("Importing expense accounts from "), 0U);
  import.Signal(SIGTERM);
  EXPECT_EQ(import.Wait(), 143);
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST_F(WaitingImport, HeedsSignalsWhileNobodyReadsItsOutput) {
  ChildProcess import(place.ImportArguments("ald.kpf", {"--expenses"}), ChildProcess::Output::Blocked);
  for (int waits = 0; waits < 1000 && !std::filesystem::exists(place / "ald.kpf.lock"); ++waits)
    ::usleep(10000);
  ::usleep(100000);  // until it announces itself
  import.Signal(SIGTERM);
  EXPECT_EQ(import.Wait(), 143);
  EXPECT_EQ(import.Errors(), "krnqb: import interrupted: asked to end (SIGTERM); nothing was written\n");
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST_F(WaitingImport, IsEndedAtOnceByASecondSignal) {
  for (const int second : {SIGINT, SIGTERM}) {
    const int first = second == SIGINT ? SIGTERM : SIGINT;
    ChildProcess import(Arguments());
    std::ofstream recording(place / "fifo");
    // Stopped, it cannot heed the first one before the second arrives.
    for (const int signal : {SIGSTOP, first}) import.Signal(signal);
    ::usleep(20000);
    for (const int signal : {second, SIGCONT}) import.Signal(signal);
    const int status = import.Wait();
    EXPECT_TRUE(status == -SIGTERM || status == -SIGINT) << status;
    EXPECT_EQ(ReadText(place / "ald.kpf"), before);
  }
}

TEST_F(WaitingImport, SucceedsIfInterruptedOnceThePlanIsWritten) {
  const auto arguments = place.ImportArguments("ald.kpf", {"--expenses", "--json"});
  ChildProcess import(arguments, ChildProcess::Output::Blocked);
  // Its report is printed last and waits for a reader.
  for (int waits = 0; waits < 1000 && ReadText(place / "ald.kpf") == before; ++waits) ::usleep(10000);
  ASSERT_NE(ReadText(place / "ald.kpf"), before);
  for (int interrupts = 0; interrupts < 2; ++interrupts) {
    import.Signal(SIGINT);
    ::usleep(50000);
  }
  EXPECT_NE(import.Drain().find("\"result\": \"imported\""), std::string::npos);
  EXPECT_EQ(import.Wait(), 0) << import.Errors();
}

TEST_F(WaitingImport, LeavesThePlanWholeWheneverItIsInterrupted) {
  const auto arguments = place.ImportArguments("ald.kpf", {"--expenses", "--quiet"});
  const auto begun = std::chrono::steady_clock::now();
  ASSERT_EQ(ChildProcess(arguments).Wait(), 0);
  const auto elapsed = std::chrono::steady_clock::now() - begun;
  const auto duration =
      static_cast<unsigned>(std::chrono::duration_cast<std::chrono::microseconds>(elapsed).count());
  constexpr unsigned moments = 16;
  for (unsigned moment = 0; moment < moments; ++moment) {
    const unsigned delay = duration / moments * moment * 5 / 4;
    tests::WriteText(place / "ald.kpf", before);
    std::filesystem::remove(place / "ald.kpf.bak");
    ChildProcess import(arguments);
    ::usleep(delay);
    import.Signal(SIGINT);
    const int status = import.Wait();
    const bool written = std::filesystem::exists(place / "ald.kpf.bak");
    if (status == 130 || status == -SIGINT) {
      EXPECT_EQ(ReadText(place / "ald.kpf"), before) << delay;
    } else {
      EXPECT_EQ(status, 0) << delay << import.Errors();
      EXPECT_TRUE(written) << delay;
    }
  }
}

}  // namespace
}  // namespace krnqb::cli
