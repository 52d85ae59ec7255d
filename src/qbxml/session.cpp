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

Error OpeningError(const Error& error) {
  if (error.Number() == NumberOf(ErrorKind::CompanyNotOpen)) return Error(ErrorKind::CompanyNotOpen);
  if (error.Number() == NumberOf(ErrorKind::ProcessorMissing)) return Error(ErrorKind::ProcessorMissing);
  return {ErrorKind::SessionRefused, error.Number(),
          fmt::format("Error ({}): {}", error.Number(), error.Description())};
}

std::string MonthOfFiscalYear(const XmlElement& answer) {
  const XmlElement month = answer.Select("//FirstMonthFiscalYear");
  return month ? month.Text() : std::string();
}

}  // namespace

bool Session::IsSessionOpen() {
  if (state_.requestProcessor == nullptr) return false;
  // An error means that the session is gone, which is a result and not a failure to report.
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
    ReportEnd(observer_, {.operation = Operation::EnsureSession}, error);
    errorPair_.Set(OpeningError(error));
    return false;
  }
  return state_.qbStartingMonth != 0 || CheckCompany();
}

// Keeps a processor that refuses the connection or the session: the next attempt checks it for an open
// session first.
void Session::OpenSession() {
  if (processors_ == nullptr) throw Error(error_number::cannotCreateObject);
  state_.requestProcessor = processors_->Create();
  state_.requestProcessor->OpenConnection(applicationIdentifier, applicationName);
  state_.sessionTicket = state_.requestProcessor->BeginSession(state_.companyPath, whateverModeAllowed);
}

bool Session::CheckCompany() {
  const Place place{.operation = Operation::EnsureSession, .request = request_number::company};
  XmlElement answer;
  SkipOnError(observer_, place, [&] {
    answer = AnswerElement(Send(BuildRequest(request_number::company, {}, {}), place), observer_, place);
  });
  if (!answer || !answer.Select("//CompanyRet")) {
    errorPair_.Set(Error(ErrorKind::FiscalMonthMissing));
    return false;
  }
  const std::optional<std::int16_t> month = MonthNumber(MonthOfFiscalYear(answer));
  if (!month) {
    errorPair_.Set(Error(ErrorKind::FiscalMonthUnreadable));
    return false;
  }
  state_.qbStartingMonth = *month;
  return true;
}

void Session::CloseSession() noexcept {
  state_.requestProcessor.reset();
  state_.companyPath.clear();
}

std::string Session::Send(std::string_view request, const Place& place) {
  try {
    return state_.requestProcessor->ProcessRequest(state_.sessionTicket, request);
  } catch (...) {
    const Error error = CaughtError();
    const Error refusal(ErrorKind::RequestRefused, error.Number(), error.Description());
    ReportError(observer_, NoticeKind::RequestRefused, NoticeMeaning::Incomplete, place, refusal);
    throw Error(refusal);
  }
}

Variant Session::QbSerialize(const Variant& request, const Place& place) {
  if (!EnsureSession()) return {};
  return Send(request.ToText(), place);
}

void Session::UseAgain(std::string answer) noexcept {
  if (state_.requestProcessor != nullptr) state_.requestProcessor->UseAgain(std::move(answer));
}

XmlElement Session::Ask(std::int32_t requestNumber, Operation operation, std::string_view fromDate,
                        std::string_view toDate) {
  const Place place{.operation = operation,
                    .request = requestNumber,
                    .fromDate = std::string(fromDate),
                    .toDate = std::string(toDate)};
  return AnswerElement(QbSerialize(BuildRequest(requestNumber, fromDate, toDate), place), observer_, place);
}

bool Session::IsSDKVersionSupported(std::string_view version) {
  const XmlElement answer = Ask(request_number::host, Operation::IsSDKVersionSupported);
  // An XPath literal in double quotes cannot contain a double quote; several could form a valid expression.
  if (answer && version.find('"') != std::string_view::npos) throw Error(error_number::unspecified);
  const auto supported = answer.Select(fmt::format("//SupportedQBXMLVersion[text() = \"{}\"]", version));
  return static_cast<bool>(supported);
}

std::string Session::QBCompany() {
  if (!EnsureSession()) return state_.companyPath;
  if (!IsSDKVersionSupported("1.1")) {
    errorPair_.Set(Error(ErrorKind::UpdateRequired));
    return {};
  }
  state_.companyPath = state_.requestProcessor->GetCurrentCompanyFileName(state_.sessionTicket);
  state_.qbMajorVersion = state_.requestProcessor->MajorVersion();
  state_.qbMinorVersion = state_.requestProcessor->MinorVersion();
  return state_.companyPath;
}

}  // namespace krnqb
