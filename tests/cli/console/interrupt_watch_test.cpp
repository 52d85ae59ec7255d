#include "cli/console/interrupt_watch.h"

#include <gtest/gtest.h>

#include <csignal>

#include "krnqb/error.h"

namespace krnqb::cli {
namespace {

struct sigaction CurrentAction(int signal = SIGINT) {
  struct sigaction action {};
  sigaction(signal, nullptr, &action);
  return action;
}

class InterruptWatches : public testing::Test {
 protected:
  void SetUp() override {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, SIG_DFL);
  }
  void TearDown() override {
    sigaction(SIGINT, &interrupt_, nullptr);
    sigaction(SIGTERM, &termination_, nullptr);
    sigaction(SIGHUP, &hangup_, nullptr);
  }

 private:
  const struct sigaction interrupt_ = CurrentAction(SIGINT);
  const struct sigaction termination_ = CurrentAction(SIGTERM);
  const struct sigaction hangup_ = CurrentAction(SIGHUP);
};

TEST_F(InterruptWatches, RememberAnInterrupt) {
  const InterruptWatch watch;
  EXPECT_FALSE(watch.Requested());
  EXPECT_NO_THROW(watch.StopWhenRequested());
  std::raise(SIGINT);
  EXPECT_TRUE(watch.Requested());
  EXPECT_THROW(watch.StopWhenRequested(), Error);
}

TEST_F(InterruptWatches, ForgetTheInterruptsOfThePreviousWatch) {
  {
    const InterruptWatch watch;
    std::raise(SIGINT);
  }
  const InterruptWatch watch;
  EXPECT_FALSE(watch.Requested());
}

TEST_F(InterruptWatches, RefuseToPassThePointOfNoReturnAfterAnInterrupt) {
  InterruptWatch watch;
  std::raise(SIGINT);
  EXPECT_THROW(watch.PassPointOfNoReturn(), Error);
}

TEST_F(InterruptWatches, RememberEachSignalThatAsksTheProgramToEnd) {
  struct Case {
    int signal;
    int code;
    const char* line;
  };
  for (const auto& [signal, code, line] :
       {Case{SIGINT, 130, "krnqb: work interrupted: stopped on request; nothing was written"},
        Case{SIGTERM, 143, "krnqb: work interrupted: asked to end (SIGTERM); nothing was written"},
        Case{SIGHUP, 129,
             "krnqb: work interrupted: the terminal was closed (SIGHUP); nothing was written"}}) {
    const InterruptWatch watch;
    std::raise(signal);
    EXPECT_TRUE(watch.Requested()) << signal;
    EXPECT_TRUE(InterruptRequested()) << signal;
    const Failure failure = watch.Interruption("work interrupted", "nothing was written");
    EXPECT_EQ(static_cast<int>(failure.Code()), code);
    EXPECT_EQ(failure.Line(), line);
  }
}

TEST_F(InterruptWatches, DisregardEveryInterruptPastThePointOfNoReturn) {
  InterruptWatch watch;
  watch.PassPointOfNoReturn();
  for (const int signal : {SIGINT, SIGINT, SIGTERM, SIGTERM, SIGHUP, SIGHUP}) std::raise(signal);
  EXPECT_FALSE(watch.Requested());
  EXPECT_NO_THROW(watch.StopWhenRequested());
}

TEST_F(InterruptWatches, LeaveInterruptsWithoutEffectOnceTheResultIsWritten) {
  {
    InterruptWatch watch;
    watch.PassPointOfNoReturn();
  }
  std::raise(SIGINT);
  std::raise(SIGTERM);
  SUCCEED() << "the process is still running";
}

TEST_F(InterruptWatches, RestoreTheSignalsIfNothingWasWritten) {
  {
    InterruptWatch watch;
    std::raise(SIGINT);
    EXPECT_THROW(watch.PassPointOfNoReturn(), Error);
  }
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) EXPECT_EQ(CurrentAction(signal).sa_handler, SIG_DFL);
}

TEST_F(InterruptWatches, CanFollowOneAnother) {
  { const InterruptWatch watch; }
  const InterruptWatch watch;
  std::raise(SIGINT);
  EXPECT_TRUE(watch.Requested());
}

TEST_F(InterruptWatches, LeaveIgnoredInterruptsIgnored) {
  std::signal(SIGINT, SIG_IGN);
  {
    InterruptWatch watch;
    std::raise(SIGINT);
    EXPECT_FALSE(watch.Requested());
    watch.PassPointOfNoReturn();
  }
  EXPECT_EQ(CurrentAction().sa_handler, SIG_IGN);
}

TEST_F(InterruptWatches, ProtectOnlyTheWritingWhereInterruptsAreToBeLeftAlone) {
  {
    InterruptWatch watch(InterruptWatch::Interrupts::LeftAsTheyAre);
    EXPECT_EQ(CurrentAction().sa_handler, SIG_DFL);
    watch.PassPointOfNoReturn();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::raise(signal);
    EXPECT_FALSE(watch.Requested());
  }
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) EXPECT_EQ(CurrentAction(signal).sa_handler, SIG_DFL);
}

TEST_F(InterruptWatches, LetTheSecondInterruptEndTheProcess) {
  struct Case {
    int first;
    int second;
  };
  for (const auto& [first, second] : {Case{SIGINT, SIGINT}, Case{SIGTERM, SIGINT}, Case{SIGHUP, SIGINT},
                                      Case{SIGINT, SIGTERM}, Case{SIGTERM, SIGTERM}}) {
    EXPECT_EXIT(
        {
          const InterruptWatch watch;
          std::raise(first);
          std::raise(second);
        },
        testing::KilledBySignal(second), "")
        << first << ' ' << second;
  }
}

TEST_F(InterruptWatches, DisregardASecondHangup) {
  const InterruptWatch watch;
  std::raise(SIGHUP);
  std::raise(SIGHUP);
  EXPECT_TRUE(watch.Requested());
}

}  // namespace
}  // namespace krnqb::cli
