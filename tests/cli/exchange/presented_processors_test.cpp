#include "cli/exchange/presented_processors.h"

#include <gtest/gtest.h>

#include "fakes/request_processor.h"

namespace krnqb::cli {
namespace {

struct QuickBooks {
  std::shared_ptr<fakes::FakeQuickBooks> quickBooks = std::make_shared<fakes::FakeQuickBooks>();
  std::shared_ptr<RequestProcessorFactory> processors =
      std::make_shared<fakes::FakeProcessorFactory>(quickBooks, std::make_shared<fakes::Journal>());
};

TEST(PresentedProcessors, StateThePresentedVersionAndForwardEverythingElse) {
  const QuickBooks inner;
  inner.quickBooks->answers["4"] = "<QBXML/>";
  const auto processor = PresentedProcessors(inner.processors, ProcessorVersion{2, 0})->Create();
  processor->OpenConnection("id", "name");
  const std::string ticket = processor->BeginSession("C:\\a.qbw", 2);
  EXPECT_EQ(processor->MajorVersion(), 2);
  EXPECT_EQ(processor->MinorVersion(), 0);
  EXPECT_EQ(processor->ProcessRequest(ticket, "requestID=\"4\""), "<QBXML/>");
  EXPECT_EQ(processor->GetCurrentCompanyFileName(ticket), inner.quickBooks->company);
}

TEST(PresentedProcessors, AreTheProcessorsThemselvesWithoutAVersion) {
  const QuickBooks inner;
  EXPECT_EQ(PresentedProcessors(inner.processors, std::nullopt), inner.processors);
}

}  // namespace
}  // namespace krnqb::cli
