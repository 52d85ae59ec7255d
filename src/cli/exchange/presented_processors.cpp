#include "cli/exchange/presented_processors.h"

#include <utility>

namespace krnqb::cli {
namespace {

class PresentedProcessor : public RequestProcessor {
 public:
  PresentedProcessor(std::unique_ptr<RequestProcessor> inner, const ProcessorVersion& presented) noexcept
      : inner_(std::move(inner)), presented_(presented) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    return inner_->ProcessRequest(ticket, request);
  }
  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    inner_->OpenConnection(applicationIdentifier, applicationName);
  }
  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    return inner_->BeginSession(companyFile, fileMode);
  }
  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return inner_->GetCurrentCompanyFileName(ticket);
  }
  std::int16_t MajorVersion() override { return presented_.major; }
  std::int16_t MinorVersion() override { return presented_.minor; }

 private:
  std::unique_ptr<RequestProcessor> inner_;
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
