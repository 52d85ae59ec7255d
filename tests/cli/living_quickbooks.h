#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/console/surroundings.h"
#include "cli/workplace.h"
#include "company/processor.h"
#include "krnqb/error.h"
#include "qbxml/forwarding_processor.h"

namespace krnqb::cli::tests {

/// A QuickBooks in which a company file is open, with what was asked of it.
struct LivingQuickBooks {
  std::string openCompany;
  std::int16_t majorVersion = 1;
  std::int16_t minorVersion = 1;
  std::string refusedPart;        ///< a request with this text in it is refused; empty: none
  std::size_t lastRequest = ~0U;  ///< after so many requests QuickBooks is closed
  std::vector<std::string> requests;
  int sessions = 0;
};

class LivingProcessor final : public ForwardingProcessor {
 public:
  explicit LivingProcessor(std::shared_ptr<LivingQuickBooks> quickBooks)
      : ForwardingProcessor(company::EmbeddedProcessors({})->Create()), quickBooks_(std::move(quickBooks)) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    RequireRunning();
    quickBooks_->requests.emplace_back(request);
    const std::string& refused = quickBooks_->refusedPart;
    if (!refused.empty() && request.find(refused) != std::string_view::npos)
      throw Error(-2147220480, "QuickBooks found an error when parsing the request");
    return ForwardingProcessor::ProcessRequest(ticket, request);
  }
  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    ++quickBooks_->sessions;
    return ForwardingProcessor::BeginSession(companyFile.empty() ? quickBooks_->openCompany : companyFile,
                                             fileMode);
  }
  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    RequireRunning();
    return ForwardingProcessor::GetCurrentCompanyFileName(ticket);
  }
  std::int16_t MajorVersion() override { return quickBooks_->majorVersion; }
  std::int16_t MinorVersion() override { return quickBooks_->minorVersion; }

 private:
  void RequireRunning() const {
    if (quickBooks_->requests.size() >= quickBooks_->lastRequest)
      throw Error(-2147220472, "QuickBooks was closed");
  }

  std::shared_ptr<LivingQuickBooks> quickBooks_;
};

/// Surroundings at 2003-01-15 12:00 with this QuickBooks on the machine.
inline Surroundings With(const std::shared_ptr<LivingQuickBooks>& quickBooks) {
  return {.clock = JanuaryClock(), .errorIsTerminal = false, .processorClasses = [quickBooks] {
            return std::vector<ProcessorClass>{
                {.name = "LivingQuickBooks",
                 .create = [quickBooks] { return std::make_unique<LivingProcessor>(quickBooks); },
                 .onlyForOtherWidth = [] { return false; }}};
          }};
}

}  // namespace krnqb::cli::tests
