#include "import/accounts/deserialize.h"

#include "import/accounts/selection.h"
#include "plan/account_writers.h"
#include "plan/table_identifiers.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"
#include "support/number_text.h"
#include "support/warning_report.h"

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

void WriteTables(ImportContext& context, TablesDocument& changed, const XmlElement& accounts) {
  const double requestId = RequestIdOf(accounts);
  if (requestId == request_number::incomeAccounts) {
    WriteSalesAccounts(changed, accounts, context.plan, context.clock);
  } else if (requestId == request_number::costAccounts) {
    WriteCostAccounts(changed, accounts, context.plan, context.clock);
  } else if (requestId == request_number::expenseAccounts) {
    SelectAccountRows(context, changed, accounts);
  }
}

void WarnOfHalfTwins(const TablesDocument& changed, Observer& observer, const Place& place) {
  for (const TableTwins& twins : tableTwins) {
    const bool planned = changed.Contains(twins.planned);
    const bool actual = changed.Contains(twins.actual);
    if (planned == actual) continue;
    ReportWarning(observer, place, [&] {
      return Finding{.code = WarningCode::HalfLoadedTwins,
                     .name = std::string(planned ? twins.plannedName : twins.actualName),
                     .other = std::string(planned ? twins.actualName : twins.plannedName)};
    });
  }
}

}  // namespace

std::optional<TablesDocument> ChangedTables(ImportContext& context, const Variant& serialData) {
  TablesDocument changed;
  bool documentFound = false;
  const Place place{.operation = Operation::KRNDeserialize};
  const bool complete = EndOnError(context.observer, place, [&] {
    const XmlElement document = DocumentOf(serialData);
    documentFound = static_cast<bool>(document);
    if (!documentFound) return;
    const XmlElement accounts = document.Select("//AccountQueryRs");
    if (!accounts) throw Error(error_number::objectNotSet);
    WriteTables(context, changed, accounts);
  });
  WarnOfHalfTwins(changed, context.observer, place);
  if (!documentFound || (!complete && changed.Empty())) return std::nullopt;
  return changed;
}

std::string KRNDeserialize(ImportContext& context, const Variant& serialData) {
  const std::optional<TablesDocument> changed = ChangedTables(context, serialData);
  return changed ? changed->Text() : std::string();
}

}  // namespace krnqb
