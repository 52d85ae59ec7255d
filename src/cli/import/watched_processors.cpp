#include "cli/import/watched_processors.h"

#include <utility>

#include "support/error_handling.h"

namespace krnqb::cli {
namespace {

class WatchedProcessor : public RequestProcessor {
 public:
  WatchedProcessor(std::unique_ptr<RequestProcessor> inner, const InterruptWatch& interrupts,
                   Omissions& omissions) noexcept
      : inner_(std::move(inner)), interrupts_(interrupts), omissions_(omissions) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    interrupts_.StopWhenRequested();
    try {
      return inner_->ProcessRequest(ticket, request);
    } catch (...) {
      omissions_.AddFailedRequest(request, CaughtError());
      throw;
    }
  }

  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    interrupts_.StopWhenRequested();
    inner_->OpenConnection(applicationIdentifier, applicationName);
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    return inner_->BeginSession(companyFile, fileMode);
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return inner_->GetCurrentCompanyFileName(ticket);
  }

  std::int16_t MajorVersion() override { return inner_->MajorVersion(); }
  std::int16_t MinorVersion() override { return inner_->MinorVersion(); }

 private:
  std::unique_ptr<RequestProcessor> inner_;
  const InterruptWatch& interrupts_;
  Omissions& omissions_;
};

class WatchedFactory : public RequestProcessorFactory {
 public:
  WatchedFactory(std::shared_ptr<RequestProcessorFactory> inner, const InterruptWatch& interrupts,
                 Omissions& omissions) noexcept
      : inner_(std::move(inner)), interrupts_(interrupts), omissions_(omissions) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<WatchedProcessor>(inner_->Create(), interrupts_, omissions_);
  }

 private:
  std::shared_ptr<RequestProcessorFactory> inner_;
  const InterruptWatch& interrupts_;
  Omissions& omissions_;
};

}  // namespace

std::shared_ptr<RequestProcessorFactory> WatchedProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                           const InterruptWatch& interrupts,
                                                           Omissions& omissions) {
  return std::make_shared<WatchedFactory>(std::move(inner), interrupts, omissions);
}

}  // namespace krnqb::cli
