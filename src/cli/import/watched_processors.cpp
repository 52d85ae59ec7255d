#include "cli/import/watched_processors.h"

#include <utility>

#include "support/error_handling.h"

namespace krnqb::cli {
namespace {

class WatchedProcessor : public RequestProcessor {
 public:
  WatchedProcessor(std::unique_ptr<RequestProcessor> innerProcessor, const InterruptWatch& interruptWatch,
                   Omissions& importOmissions) noexcept
      : inner(std::move(innerProcessor)), interrupts(interruptWatch), omissions(importOmissions) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    interrupts.StopWhenRequested();
    try {
      return inner->ProcessRequest(ticket, request);
    } catch (...) {
      omissions.AddFailedRequest(request, CaughtError());
      throw;
    }
  }

  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    interrupts.StopWhenRequested();
    inner->OpenConnection(applicationIdentifier, applicationName);
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    return inner->BeginSession(companyFile, fileMode);
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return inner->GetCurrentCompanyFileName(ticket);
  }

  std::int16_t MajorVersion() override { return inner->MajorVersion(); }
  std::int16_t MinorVersion() override { return inner->MinorVersion(); }

 private:
  std::unique_ptr<RequestProcessor> inner;
  const InterruptWatch& interrupts;
  Omissions& omissions;
};

class WatchedFactory : public RequestProcessorFactory {
 public:
  WatchedFactory(std::shared_ptr<RequestProcessorFactory> innerFactory, const InterruptWatch& interruptWatch,
                 Omissions& importOmissions) noexcept
      : inner(std::move(innerFactory)), interrupts(interruptWatch), omissions(importOmissions) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<WatchedProcessor>(inner->Create(), interrupts, omissions);
  }

 private:
  std::shared_ptr<RequestProcessorFactory> inner;
  const InterruptWatch& interrupts;
  Omissions& omissions;
};

}  // namespace

std::shared_ptr<RequestProcessorFactory> WatchedProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                           const InterruptWatch& interrupts,
                                                           Omissions& omissions) {
  return std::make_shared<WatchedFactory>(std::move(inner), interrupts, omissions);
}

}  // namespace krnqb::cli
