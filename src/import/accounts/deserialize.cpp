#include "import/accounts/deserialize.h"

#include "import/accounts/selection.h"
#include "plan/account_writers.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

XmlElement DocumentOf(const Variant& serialData) {
  if (const XmlElement* element = serialData.AsElement()) return element->Own();
  return serialData.IsNothing() ? XmlElement() : XmlElement::Parse(serialData.ToText());
}

double RequestIdOf(const XmlElement& accounts) {
  const std::optional<std::string> requestId = accounts.Attribute("requestID");
  if (!requestId) throw Error(error_number::typeMismatch);
  return LeadingNumber(*requestId);
}

void WriteTables(ImportContext& context, std::string& body, const XmlElement& accounts) {
  const double requestId = RequestIdOf(accounts);
  if (requestId == request_number::incomeAccounts) {
    WriteSalesAccounts(body, accounts, context.plan, context.clock);
  } else if (requestId == request_number::costAccounts) {
    WriteCostAccounts(body, accounts, context.plan, context.clock);
  } else if (requestId == request_number::expenseAccounts) {
    SelectAccountRows(context, body, accounts);
  }
}

}  // namespace

std::string KRNDeserialize(ImportContext& context, const Variant& serialData) {
  std::string body;
  bool documentFound = false;
  const Place place{.operation = Operation::KRNDeserialize};
  const bool complete = EndOnError(context.observer, place, [&] {
    const XmlElement document = DocumentOf(serialData);
    documentFound = static_cast<bool>(document);
    if (!documentFound) return;
    const XmlElement accounts = document.Select("//AccountQueryRs");
    if (!accounts) throw Error(error_number::objectNotSet);
    WriteTables(context, body, accounts);
  });
  if (!documentFound || (!complete && body.empty())) return {};
  return "<tables>\r\n" + body + "\r\n</tables>";
}

}  // namespace krnqb
