#include "cli/exchange/presented_processors.h"

#include <utility>

#include "qbxml/forwarding_processor.h"

namespace krnqb::cli {
namespace {

class PresentedProcessor final : public ForwardingProcessor {
 public:
  PresentedProcessor(std::unique_ptr<RequestProcessor> inner, const ProcessorVersion& presented) noexcept
      : ForwardingProcessor(std::move(inner)), presented_(presented) {}

  std::int16_t MajorVersion() override { return presented_.major; }
  std::int16_t MinorVersion() override { return presented_.minor; }

 private:
  const ProcessorVersion presented_;
};

class PresentedFactory : public RequestProcessorFactory {
 public:
  PresentedFactory(std::shared_ptr<RequestProcessorFactory> inner, const ProcessorVersion& presented) noexcept
      : inner_(std::move(inner)), presented_(presented) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<PresentedProcessor>(inner_->Create(), presented_);
  }

 private:
  std::shared_ptr<RequestProcessorFactory> inner_;
  const ProcessorVersion presented_;
};

}  // namespace

std::shared_ptr<RequestProcessorFactory> PresentedProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                             std::optional<ProcessorVersion> presented) {
  if (!presented) return inner;
  return std::make_shared<PresentedFactory>(std::move(inner), *presented);
}

}  // namespace krnqb::cli
