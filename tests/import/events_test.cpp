#include "import/events.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "fakes/recording_sink.h"

namespace krnqb {
namespace {

TEST(Events, ReachASinkThatAHandlerAddsFromTheNextEventOn) {
  const auto journal = std::make_shared<fakes::Journal>();
  std::vector<std::shared_ptr<EventSink>> sinks{std::make_shared<fakes::RecordingSink>(journal, "first")};
  journal->On("first: AfterImport",
              [&] { sinks.push_back(std::make_shared<fakes::RecordingSink>(journal, "added")); });
  const Events events(sinks);

  events.AfterImport();
  EXPECT_EQ(journal->Text(), "first: AfterImport\n");
  journal->Clear();
  events.ProgressBarChange(20, "on");
  EXPECT_EQ(journal->Text(), "first: ProgressBarChange 20 on\nadded: ProgressBarChange 20 on\n");
}

}  // namespace
}  // namespace krnqb
