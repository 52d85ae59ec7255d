#include "cli/console/interrupt_watch.h"

#include <gtest/gtest.h>

#include "krnqb/error.h"

namespace krnqb::cli {
namespace {

struct sigaction CurrentAction() {
  struct sigaction action {};
  sigaction(SIGINT, nullptr, &action);
  return action;
}

class InterruptWatches : public testing::Test {
 protected:
  void SetUp() override { std::signal(SIGINT, SIG_DFL); }
  void TearDown() override { sigaction(SIGINT, &before_, nullptr); }

 private:
  const struct sigaction before_ = CurrentAction();
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
  const InterruptWatch watch;
  std::raise(SIGINT);
  EXPECT_THROW(watch.PassPointOfNoReturn(), Error);
}

TEST_F(InterruptWatches, DisregardEveryInterruptPastThePointOfNoReturn) {
  const InterruptWatch watch;
  watch.PassPointOfNoReturn();
  std::raise(SIGINT);
  std::raise(SIGINT);
  EXPECT_FALSE(watch.Requested());
  EXPECT_NO_THROW(watch.StopWhenRequested());
}

TEST_F(InterruptWatches, LeaveInterruptsWithoutEffectUntilTheProcessEnds) {
  { const InterruptWatch watch; }
  std::raise(SIGINT);
  std::raise(SIGINT);
  SUCCEED() << "the process is still running";
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
    const InterruptWatch watch;
    std::raise(SIGINT);
    EXPECT_FALSE(watch.Requested());
    watch.PassPointOfNoReturn();
  }
  EXPECT_EQ(CurrentAction().sa_handler, SIG_IGN);
}

TEST_F(InterruptWatches, ChangeNothingWhereInterruptsAreToBeLeftAlone) {
  {
    const InterruptWatch watch(InterruptWatch::Interrupts::LeftAsTheyAre);
    watch.PassPointOfNoReturn();
    EXPECT_EQ(CurrentAction().sa_handler, SIG_DFL);
  }
  EXPECT_EQ(CurrentAction().sa_handler, SIG_DFL);
}

TEST_F(InterruptWatches, LetTheSecondInterruptEndTheProcess) {
  EXPECT_EXIT(
      {
        const InterruptWatch watch;
        std::raise(SIGINT);
        std::raise(SIGINT);
      },
      testing::KilledBySignal(SIGINT), "");
}

}  // namespace
}  // namespace krnqb::cli
