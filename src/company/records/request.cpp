#include "company/records/request.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "company/records/date.h"
#include "company/records/errors.h"
#include "company/records/kinds.h"
#include "company/records/versions.h"
#include "krnqb/error.h"
#include "qbxml/envelope.h"
#include "xml/parser.h"

namespace krnqb::company {
namespace {

struct RequestKind {
  std::string_view name;
  RequestSubject subject;
  std::string_view firstVersion;
};

constexpr std::array requestKinds = {
    RequestKind{"AccountQueryRq", RequestSubject::Accounts, "1.0"},
    RequestKind{"ItemQueryRq", RequestSubject::Items, "1.0"},
    RequestKind{"BillQueryRq", RequestSubject::Transactions, "1.0"},
    RequestKind{"CheckQueryRq", RequestSubject::Transactions, "1.0"},
    RequestKind{"CreditCardChargeQueryRq", RequestSubject::Transactions, "1.0"},
    RequestKind{"InvoiceQueryRq", RequestSubject::Transactions, "1.0"},
    RequestKind{"SalesReceiptQueryRq", RequestSubject::Transactions, "1.0"},
    RequestKind{"CompanyQueryRq", RequestSubject::Setting, "1.0"},
    RequestKind{"PreferencesQueryRq", RequestSubject::Setting, "1.0"},
    RequestKind{"HostQueryRq", RequestSubject::Host, "1.0"},
    RequestKind{"GeneralSummaryReportQueryRq", RequestSubject::Report, "2.0"},
};

constexpr std::array<std::string_view, 3> reportBases = {"Accrual", "Cash", "None"};

[[noreturn]] void Refuse(std::string_view reason) {
  throw Error(company_error::cannotParse, fmt::format("The request cannot be parsed: {}.", reason));
}

bool IsLater(std::string_view version, std::string_view other) {
  return VersionOrder(version) > VersionOrder(other);
}

// The head of 1.0 is not well-formed XML, so heads are compared as text and not parsed.
std::string_view VersionOfHead(std::string_view document) {
  for (const std::string_view version : qbxmlVersions) {
    if (document.starts_with(EnvelopeHead(version))) return version;
  }
  Refuse("it does not begin with the envelope of a known qbXML version");
}

XmlElement ParseMessages(std::string_view document) {
  if (std::ranges::any_of(document,
                          [](char character) { return static_cast<unsigned char>(character) >= 0x80; })) {
    Refuse("it contains a non-ASCII character that is not a character reference");
  }
  const XmlParseResult parsed = ParseXmlText(document.substr(document.find("<QBXML>")));
  if (parsed.fault) Refuse(parsed.fault->message);
  XmlElement messages = parsed.element.FirstChild();
  if (messages.NextSibling()) Refuse(fmt::format("{} follows QBXMLMsgsRq", messages.NextSibling().Name()));
  if (const XmlElement mixed = messages.Select("//*[*][text()[normalize-space()]]")) {
    Refuse(fmt::format("{} contains text between its elements", mixed.Name()));
  }
  if (const XmlElement marked = messages.Select("*/descendant::*[@*] | *[@*[name() != 'requestID']]")) {
    Refuse(fmt::format("{} has an unexpected attribute", marked.Name()));
  }
  return messages;
}

/// Reads the child elements of an element in order.
class Content {
 public:
  explicit Content(const XmlElement& owner) : owner_(owner), next_(owner.FirstChild()) {
    if (!next_ && owner.Text().find_first_not_of(" \t\r\n") != std::string::npos) {
      Refuse(fmt::format("{} contains text", owner.Name()));
    }
  }

  /// Takes the next child if it has that name; otherwise returns an empty element.
  XmlElement Take(std::string_view name) {
    if (!next_ || next_.Name() != name) return {};
    XmlElement taken = next_;
    next_ = next_.NextSibling();
    return taken;
  }

  /// Takes the next child's text if it has that name.
  std::optional<std::string> TakeText(std::string_view name) {
    const XmlElement taken = Take(name);
    if (!taken) return std::nullopt;
    if (taken.FirstChild()) Refuse(fmt::format("{} cannot contain elements", name));
    return taken.Text();
  }

  void RequireEnd() const {
    if (next_) Refuse(fmt::format("{} is not allowed here in {}", next_.Name(), owner_.Name()));
  }

 private:
  XmlElement owner_;
  XmlElement next_;
};

void ReadAccountQuery(const XmlElement& element, CompanyRequest& request) {
  Content content(element);
  while (const auto type = content.TakeText("AccountType")) {
    if (!AccountTypeOrder(*type)) Refuse(fmt::format("\"{}\" is not a valid AccountType", *type));
    request.accountTypes.push_back(*type);
  }
  content.RequireEnd();
}

std::string TakeDate(Content& content, std::string_view name) {
  std::string date = content.TakeText(name).value_or("");
  if (!date.empty() && !IsCalendarDate(date)) Refuse(fmt::format("\"{}\" is not a valid {}", date, name));
  return date;
}

bool TakeBoolean(Content& content, std::string_view name) {
  const std::string text = content.TakeText(name).value_or("0");
  if (text == "1" || text == "true") return true;
  if (text == "0" || text == "false") return false;
  Refuse(fmt::format("\"{}\" is not a valid {}", text, name));
}

void ReadTransactionQuery(const XmlElement& element, CompanyRequest& request) {
  Content content(element);
  if (const XmlElement filter = content.Take("TxnDateRangeFilter")) {
    Content range(filter);
    request.fromDate = TakeDate(range, "FromTxnDate");
    request.toDate = TakeDate(range, "ToTxnDate");
    range.RequireEnd();
  }
  request.includeLines = TakeBoolean(content, "IncludeLineItems");
  content.RequireEnd();
}

void ReadReportQuery(const XmlElement& element, CompanyRequest& request) {
  Content content(element);
  const auto type = content.TakeText("GeneralSummaryReportType");
  if (!type) Refuse(fmt::format("{} has no GeneralSummaryReportType", request.name));
  request.reportType = *type;
  if (const XmlElement taken = content.Take("ReportPeriod")) {
    Content period(taken);
    request.fromDate = TakeDate(period, "FromReportDate");
    request.toDate = TakeDate(period, "ToReportDate");
    period.RequireEnd();
  }
  if (const XmlElement taken = content.Take("ReportAccountFilter")) {
    Content filter(taken);
    request.accountTypeFilter = filter.TakeText("AccountTypeFilter").value_or("");
    filter.RequireEnd();
  }
  request.columns = content.TakeText("SummarizeColumnsBy").value_or("");
  request.basis = content.TakeText("ReportBasis").value_or("");
  if (!request.basis.empty() && std::ranges::find(reportBases, request.basis) == reportBases.end()) {
    Refuse(fmt::format("\"{}\" is not a valid ReportBasis", request.basis));
  }
  content.RequireEnd();
}

// These requests are declared empty and must not contain even a blank.
void RequireEmpty(const XmlElement& element) {
  if (element.Select("self::*[node()]")) Refuse(fmt::format("{} must be empty", element.Name()));
}

CompanyRequest ReadRequest(const XmlElement& element, std::string_view version) {
  CompanyRequest request;
  request.name = element.Name();
  request.requestId = element.Attribute("requestID");
  if (!request.name.ends_with("Rq")) Refuse(fmt::format("{} is not a request", request.name));
  const auto* const kind =
      std::ranges::find(requestKinds, std::string_view(request.name), &RequestKind::name);
  if (kind == requestKinds.end()) return request;
  if (IsLater(kind->firstVersion, version)) {
    Refuse(fmt::format("qbXML {} has no {}", version, request.name));
  }
  request.subject = kind->subject;
  switch (request.subject) {
    case RequestSubject::Accounts:
      ReadAccountQuery(element, request);
      break;
    case RequestSubject::Items:
      Content(element).RequireEnd();
      break;
    case RequestSubject::Transactions:
      ReadTransactionQuery(element, request);
      break;
    case RequestSubject::Report:
      ReadReportQuery(element, request);
      break;
    case RequestSubject::Setting:
    case RequestSubject::Host:
      RequireEmpty(element);
      break;
    case RequestSubject::Unsupported:
      break;
  }
  return request;
}

}  // namespace

std::string_view CompanyRequest::Family() const noexcept {
  return std::string_view(name).substr(0, name.size() - std::string_view("QueryRq").size());
}

std::vector<CompanyRequest> ParseRequests(std::string_view document, std::string_view processorVersion) {
  const std::string_view version = VersionOfHead(document);
  if (IsLater(version, processorVersion)) {
    Refuse(fmt::format("it is in qbXML {}, but the company's processor supports versions up to {}", version,
                       processorVersion));
  }
  std::vector<CompanyRequest> requests;
  const XmlElement messages = ParseMessages(document);
  for (XmlElement element = messages.FirstChild(); element; element = element.NextSibling()) {
    requests.push_back(ReadRequest(element, version));
  }
  return requests;
}

}  // namespace krnqb::company
