#include "company/processor.h"

#include <fmt/format.h>

#include <optional>
#include <utility>

#include "company/file.h"
#include "company/records/errors.h"
#include "krnqb/error.h"
#include "support/path_text.h"

namespace krnqb::company {
namespace {

class CompanyProcessor : public RequestProcessor {
 public:
  explicit CompanyProcessor(Interruption interrupted) : interrupted_(std::move(interrupted)) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    return SessionCompany(ticket).Answer(request, std::move(spare_));
  }

  void UseAgain(std::string&& answer) noexcept override { spare_ = std::move(answer); }

  void OpenConnection(std::string_view /*applicationIdentifier*/,
                      std::string_view /*applicationName*/) override {
    connected_ = true;
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t /*fileMode*/) override {
    if (!connected_) throw Error(company_error::unexpected, "A session needs an open connection.");
    if (company_) throw Error(company_error::unexpected, "A session is already open.");
    if (companyFile.empty())
      throw Error(company_error::noCompanyOpen, "No company file was named, and none is open.");
    company_ = CompanyFile::Open(PathFrom(companyFile), FileAccess::ReadOnly, interrupted_);
    sessionTicket_ = fmt::format("session with {}", TextOfPath(company_->Path()));
    return sessionTicket_;
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return company_ ? TextOfPath(SessionCompany(ticket).Path()) : std::string();
  }

  std::int16_t MajorVersion() override { return VersionDigit(0); }
  std::int16_t MinorVersion() override { return VersionDigit(2); }

 private:
  const CompanyFile& SessionCompany(std::string_view ticket) const {
    if (!company_) throw Error(company_error::unexpected, "No session is open.");
    if (ticket != sessionTicket_)
      throw Error(company_error::unexpected, "The ticket does not belong to the open session.");
    return *company_;
  }

  // Versions have the form digit, point, digit.
  std::int16_t VersionDigit(std::size_t position) const {
    if (!company_) throw Error(company_error::unexpected, "No session is open.");
    return static_cast<std::int16_t>(company_->ProcessorVersion()[position] - '0');
  }

  Interruption interrupted_;
  bool connected_ = false;
  std::optional<CompanyFile> company_;
  std::string sessionTicket_;
  std::string spare_;  // memory for the next answer
};

class CompanyProcessorFactory : public RequestProcessorFactory {
 public:
  explicit CompanyProcessorFactory(Interruption interrupted) : interrupted_(std::move(interrupted)) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<CompanyProcessor>(interrupted_);
  }

 private:
  Interruption interrupted_;
};

}  // namespace

std::shared_ptr<RequestProcessorFactory> EmbeddedProcessors(Interruption interrupted) {
  return std::make_shared<CompanyProcessorFactory>(std::move(interrupted));
}

}  // namespace krnqb::company
