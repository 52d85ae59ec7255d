#include "qbxml/session.h"

#include <fmt/format.h>

#include "qbxml/request_catalogue.h"
#include "qbxml/response_element.h"
#include "support/date.h"
#include "support/error_handling.h"

namespace krnqb {
namespace {

constexpr std::string_view applicationIdentifier = "KRN6_QB2002.dll";
constexpr std::string_view applicationName = "Korrin Software Data Exchange Component";
constexpr std::int32_t whateverModeAllowed = 2;

constexpr std::int32_t companyNotOpenNumber = -2147220458;
constexpr std::int32_t fiscalMonthMissingNumber = -2147221404;
constexpr std::int32_t fiscalMonthUnreadableNumber = -2147221504;

constexpr std::string_view companyNotOpenMessage =
    "Your QuickBooks company file must be open to perform this import.";
constexpr std::string_view processorMissingMessage =
    "You must have a U.S. version of one of the following Quickbooks 2002 or 2003 products to perform this "
    "import:  "
    "Quickbooks Premier, Quickbooks Premier Accountant Edition, or QuickBooks Pro.";
constexpr std::string_view fiscalMonthMissingMessage =
    "To perform the import you need to provide the QuickBooks fiscal year start month.";
constexpr std::string_view fiscalMonthUnreadableMessage =
    "To perform the import from QuickBooks Pro you need the United States version of QuickBooks Pro and an "
    "English "
    "regional setting locale.";

std::string OpeningFailureMessage(const Error& error) {
  if (error.Number() == companyNotOpenNumber) return std::string(companyNotOpenMessage);
  if (error.Number() == error_number::cannotCreateObject) return std::string(processorMissingMessage);
  return fmt::format("Error ({}): {}", error.Number(), error.Description());
}

Place At(std::string_view operation, std::int32_t requestNumber) {
  return Place{.operation = std::string(operation), .request = requestNumber, .fromDate = {}, .toDate = {}};
}

}  // namespace

bool Session::IsSessionOpen() {
  if (state_.requestProcessor == nullptr) return false;
  // Any error means that the session is gone: that is the question's answer, and nothing to tell.
  try {
    return !state_.requestProcessor->GetCurrentCompanyFileName(state_.sessionTicket).empty();
  } catch (...) {
    return false;
  }
}

bool Session::EnsureSession() {
  if (IsSessionOpen()) return true;
  try {
    OpenSession();
  } catch (...) {
    const Error error = CaughtError();
    TellError(observer_, NoticeKind::OperationEnded, Place{"EnsureSession", {}, {}, {}}, error);
    errorPair_.Set(error.Number(), OpeningFailureMessage(error));
    return false;
  }
  return state_.qbStartingMonth != 0 || CheckCompany();
}

// A processor that refuses the connection or the session is kept: the next attempt asks it first.
void Session::OpenSession() {
  if (processors_ == nullptr) throw Error(error_number::cannotCreateObject);
  state_.requestProcessor = processors_->Create();
  state_.requestProcessor->OpenConnection(applicationIdentifier, applicationName);
  state_.sessionTicket = state_.requestProcessor->BeginSession(state_.companyPath, whateverModeAllowed);
}

bool Session::CheckCompany() {
  const Place place = At("EnsureSession", request_number::company);
  XmlElement answer;
  SkipOnError(observer_, place, [&] {
    const std::string request = BuildRequest(request_number::company, {}, {});
    answer = AnswerElement(state_.requestProcessor->ProcessRequest(state_.sessionTicket, request), observer_,
                           place);
  });
  if (!answer || !answer.Select("//CompanyRet")) {
    errorPair_.Set(fiscalMonthMissingNumber, std::string(fiscalMonthMissingMessage));
    return false;
  }
  const std::optional<std::int16_t> month = MonthNumber(MonthOfFiscalYear(answer));
  if (!month) {
    errorPair_.Set(fiscalMonthUnreadableNumber, std::string(fiscalMonthUnreadableMessage));
    return false;
  }
  state_.qbStartingMonth = *month;
  return true;
}

std::string Session::MonthOfFiscalYear(const XmlElement& answer) {
  const XmlElement month = answer.Select("//FirstMonthFiscalYear");
  return month ? month.Text() : std::string();
}

void Session::CloseSession() noexcept {
  state_.requestProcessor.reset();
  state_.companyPath.clear();
}

Variant Session::QbSerialize(const Variant& request) {
  if (!EnsureSession()) return {};
  return state_.requestProcessor->ProcessRequest(state_.sessionTicket, request.ToText());
}

XmlElement Session::Ask(std::int32_t requestNumber, std::string_view operation, std::string_view fromDate,
                        std::string_view toDate) {
  Place place = At(operation, requestNumber);
  place.fromDate = fromDate;
  place.toDate = toDate;
  return AnswerElement(QbSerialize(BuildRequest(requestNumber, fromDate, toDate)), observer_, place);
}

bool Session::IsSDKVersionSupported(std::string_view version) {
  const XmlElement answer = Ask(request_number::host, "IsSDKVersionSupported");
  // No search path can hold a double quote, however many of them would make one again.
  if (answer && version.find('"') != std::string_view::npos) throw Error(error_number::unspecified);
  const auto supported = answer.Select(fmt::format("//SupportedQBXMLVersion[text() = \"{}\"]", version));
  return static_cast<bool>(supported);
}

std::string Session::QBCompany() {
  if (!EnsureSession()) return state_.companyPath;
  if (!IsSDKVersionSupported("1.1")) {
    errorPair_.Set(updateRequiredNumber, std::string(updateRequiredMessage));
    return {};
  }
  state_.companyPath = state_.requestProcessor->GetCurrentCompanyFileName(state_.sessionTicket);
  state_.qbMajorVersion = state_.requestProcessor->MajorVersion();
  state_.qbMinorVersion = state_.requestProcessor->MinorVersion();
  return state_.companyPath;
}

}  // namespace krnqb
