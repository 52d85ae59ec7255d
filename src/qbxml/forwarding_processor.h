#pragma once

#include <memory>
#include <utility>

#include "krnqb/request_processor.h"

namespace krnqb {

/// Forwards every call to another request processor; classes derived from it change some of the calls.
class ForwardingProcessor : public RequestProcessor {
 public:
  explicit ForwardingProcessor(std::unique_ptr<RequestProcessor> inner) noexcept : inner_(std::move(inner)) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    return inner_->ProcessRequest(ticket, request);
  }
  void UseAgain(std::string&& answer) noexcept override { inner_->UseAgain(std::move(answer)); }
  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
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
};

}  // namespace krnqb
