#include "qbxml/closing_processor.h"

#include <string>
#include <utility>
#include <vector>

namespace krnqb {
namespace {

class Closing final : public RequestProcessor {
 public:
  explicit Closing(std::unique_ptr<ClosableProcessor> inner) noexcept : inner_(std::move(inner)) {}
  Closing(const Closing&) = delete;
  Closing& operator=(const Closing&) = delete;
  ~Closing() override {
    for (const std::string& ticket : tickets_) Quietly([&] { inner_->EndSession(ticket); });
    if (connected_) Quietly([&] { inner_->CloseConnection(); });
  }

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    return inner_->ProcessRequest(ticket, request);
  }

  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    inner_->OpenConnection(applicationIdentifier, applicationName);
    connected_ = true;
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    std::string ticket = inner_->BeginSession(companyFile, fileMode);
    tickets_.push_back(ticket);
    return ticket;
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return inner_->GetCurrentCompanyFileName(ticket);
  }
  std::int16_t MajorVersion() override { return inner_->MajorVersion(); }
  std::int16_t MinorVersion() override { return inner_->MinorVersion(); }

 private:
  // Nothing depends on the end of a session, and a destructor must not throw.
  template <typename Step>
  static void Quietly(Step step) noexcept {
    try {
      step();
    } catch (...) {
    }
  }

  std::unique_ptr<ClosableProcessor> inner_;
  std::vector<std::string> tickets_;
  bool connected_ = false;
};

}  // namespace

std::unique_ptr<RequestProcessor> ClosingProcessor(std::unique_ptr<ClosableProcessor> inner) {
  return std::make_unique<Closing>(std::move(inner));
}

}  // namespace krnqb
