#include "cli/exchange/interruptible_processors.h"

#include <utility>

#include "qbxml/forwarding_processor.h"

namespace krnqb::cli {
namespace {

class InterruptibleProcessor final : public ForwardingProcessor {
 public:
  InterruptibleProcessor(std::unique_ptr<RequestProcessor> inner, const InterruptWatch& interrupts) noexcept
      : ForwardingProcessor(std::move(inner)), interrupts_(interrupts) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    interrupts_.StopWhenRequested();
    std::string answer = ForwardingProcessor::ProcessRequest(ticket, request);
    interrupts_.StopWhenRequested();
    return answer;
  }

  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    interrupts_.StopWhenRequested();
    ForwardingProcessor::OpenConnection(applicationIdentifier, applicationName);
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    interrupts_.StopWhenRequested();
    return ForwardingProcessor::BeginSession(companyFile, fileMode);
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    interrupts_.StopWhenRequested();
    return ForwardingProcessor::GetCurrentCompanyFileName(ticket);
  }

 private:
  const InterruptWatch& interrupts_;
};

class InterruptibleFactory : public RequestProcessorFactory {
 public:
  InterruptibleFactory(std::shared_ptr<RequestProcessorFactory> inner,
                       const InterruptWatch& interrupts) noexcept
      : inner_(std::move(inner)), interrupts_(interrupts) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<InterruptibleProcessor>(inner_->Create(), interrupts_);
  }

 private:
  std::shared_ptr<RequestProcessorFactory> inner_;
  const InterruptWatch& interrupts_;
};

}  // namespace

std::shared_ptr<RequestProcessorFactory> InterruptibleProcessors(
    std::shared_ptr<RequestProcessorFactory> inner, const InterruptWatch& interrupts) {
  return std::make_shared<InterruptibleFactory>(std::move(inner), interrupts);
}

}  // namespace krnqb::cli
