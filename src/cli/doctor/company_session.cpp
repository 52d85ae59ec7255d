#include "cli/doctor/company_session.h"

#include <fmt/format.h>

#include "cli/exchange/interruptible_processors.h"
#include "cli/import/failure.h"
#include "qbxml/request_catalogue.h"

namespace krnqb::cli {
namespace {

void RequireStatus(const XmlElement& response) {
  const XmlElement refused = response.Select("//*[@statusSeverity = 'Error']");
  if (!refused) return;
  throw Error(ErrorKind::RequestRefused, error_number::unspecified,
              fmt::format("QuickBooks refused a request with status {} ({})",
                          refused.Attribute("statusCode").value_or("?"),
                          refused.Attribute("statusMessage").value_or("no reason")));
}

}  // namespace

CompanySession::CompanySession(const ImportSource& source, const InterruptWatch& interrupts)
    : exchange_({.processors = InterruptibleProcessors(source.processors, interrupts),
                 .sinks = {},
                 .observer = nullptr,
                 .userInterface = nullptr,
                 .registry = nullptr,
                 .clock = nullptr}) {
  exchange_.QBCompany(source.companyPath);
  // A company that does not state its fiscal year has a check of its own and opens all the same.
  exchange_.QBStartingMonth(1);
}

XmlElement CompanySession::Ask(std::int32_t requestNumber) {
  const Variant text = exchange_.QbSerialize(Variant(BuildRequest(requestNumber, {}, {})));
  if (text.IsEmpty()) throw Error(LastError(exchange_));
  XmlElement response = XmlElement::Parse(text.ToText());
  if (!response) {
    throw Error(ErrorKind::RequestRefused, error_number::unspecified,
                "the response to a request is not well-formed");
  }
  RequireStatus(response);
  return response;
}

}  // namespace krnqb::cli
