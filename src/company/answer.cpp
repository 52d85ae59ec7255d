#include "company/answer.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "company/records/ascii.h"
#include "company/records/kinds.h"
#include "company/records/versions.h"
#include "company/reports/summary.h"

namespace krnqb::company {
namespace {

struct AnswerStatus {
  int code;
  std::string_view severity;
  std::string_view message;
};

constexpr AnswerStatus statusOk{0, "Info", "Status OK"};
constexpr AnswerStatus statusNoMatch{1, "Info",
                                     "A query request did not find a matching object in QuickBooks"};
constexpr AnswerStatus statusUnsupported{1030, "Error", "This request is not supported."};

// Texts that sort before and after every date.
constexpr std::string_view beforeAllDates;
constexpr std::string_view afterAllDates = "9999-12-31";

// So many transactions show how large those of a period are on average.
constexpr std::size_t sampleOfTransactions = 256;

class AnswerWriter {
 public:
  AnswerWriter(const Database& database, std::string_view processorVersion)
      : database_(database), processorVersion_(processorVersion) {}

  void Answer(const CompanyRequest& request) {
    if (request.subject == RequestSubject::Unsupported) {
      StartTag(request, statusUnsupported, " />\n");
      return;
    }
    if (request.subject == RequestSubject::Report) {
      Report(request);
      return;
    }
    const std::size_t begin = text.size();
    StartTag(request, statusOk, ">\n");
    const std::size_t recordsBegin = text.size();
    Records(request);
    if (text.size() == recordsBegin) {
      text.resize(begin);
      StartTag(request, statusNoMatch, " />\n");
    } else {
      EndTag(request);
    }
  }

  std::string text;

 private:
  // The answer is named as its request, with Rs for Rq.
  void StartTag(const CompanyRequest& request, const AnswerStatus& status, std::string_view end) {
    text.append("<").append(request.name, 0, request.name.size() - 1).append("s");
    if (request.requestId) {
      text += R"( requestID=")";
      AppendAsciiText(text, *request.requestId);
      text += '"';
    }
    fmt::format_to(std::back_inserter(text), R"( statusCode="{}" statusSeverity="{}" statusMessage=")",
                   status.code, status.severity);
    AppendAsciiText(text, status.message);
    text.append("\"").append(end);
  }

  void EndTag(const CompanyRequest& request) {
    text.append("</").append(request.name, 0, request.name.size() - 1).append("s>\n");
  }

  void Records(const CompanyRequest& request) {
    switch (request.subject) {
      case RequestSubject::Accounts:
        Accounts(request);
        break;
      case RequestSubject::Items:
      case RequestSubject::Setting:
        Family(request);
        break;
      case RequestSubject::Transactions:
        Transactions(request);
        break;
      case RequestSubject::Host:
        Host();
        break;
      case RequestSubject::Report:
      case RequestSubject::Unsupported:
        break;
    }
  }

  // A report is answered even if it has no rows.
  void Report(const CompanyRequest& request) {
    if (const auto refusal = FindReportRefusal(database_, request)) {
      StartTag(request, {refusal->code, "Error", refusal->message}, " />\n");
      return;
    }
    StartTag(request, statusOk, ">\n");
    AppendReport(text, ComputeReport(database_, request));
    EndTag(request);
  }

  void Accounts(const CompanyRequest& request) {
    if (request.accountTypes.empty()) {
      Family(request);
      return;
    }
    // Each type once and in list order, whatever the order in the request.
    std::vector<std::string> types = request.accountTypes;
    std::ranges::sort(types, {}, AccountTypeOrder);
    types.erase(std::ranges::unique(types).begin(), types.end());
    for (const std::string& type : types) {
      Statement accounts =
          database_.Prepare("SELECT xml FROM record WHERE account_type = ?1 ORDER BY position");
      for (accounts.Bind(1, type); accounts.Step();) text += accounts.Text(0);
    }
  }

  void Family(const CompanyRequest& request) {
    Statement records =
        database_.Prepare("SELECT xml FROM record WHERE family = ?1 AND txn_date IS NULL ORDER BY position");
    for (records.Bind(1, request.Family()); records.Step();) text += records.Text(0);
  }

  void Transactions(const CompanyRequest& request) {
    Statement transactions = InPeriod(
        request, "SELECT xml, lines_begin, lines_end FROM record WHERE ?? ORDER BY txn_date, position");
    const std::size_t begin = text.size();
    for (std::size_t count = 0; transactions.Step(); ++count) {
      if (count == sampleOfTransactions) ReserveForAll(request, text.size() - begin);
      const std::string_view xml = transactions.Text(0);
      if (request.includeLines) {
        text += xml;
      } else {  // both offsets are 0 in a record without lines
        text += xml.substr(0, static_cast<std::size_t>(transactions.Integer(1)));
        text += xml.substr(static_cast<std::size_t>(transactions.Integer(2)));
      }
    }
  }

  // Prepares a statement whose "??" is the condition for the transactions that a request asks for.
  Statement InPeriod(const CompanyRequest& request, std::string statement) const {
    constexpr std::string_view condition = "family = ?1 AND txn_date BETWEEN ?2 AND ?3";
    statement.replace(statement.find("??"), 2, condition);
    Statement transactions = database_.Prepare(statement);
    transactions.Bind(1, request.Family())
        .Bind(2, request.fromDate.empty() ? beforeAllDates : request.fromDate)
        .Bind(3, request.toDate.empty() ? afterAllDates : request.toDate);
    return transactions;
  }

  // A text that grows is copied, and for a moment both are there. What is reserved beyond the text is never
  // touched, and spares the answers of busier months the same.
  void ReserveForAll(const CompanyRequest& request, std::size_t sampleSize) {
    Statement count = InPeriod(request, "SELECT count(*) FROM record WHERE ??");
    if (!count.Step()) return;
    const auto all = static_cast<std::size_t>(count.Integer(0));
    const std::size_t expected = text.size() + sampleSize / sampleOfTransactions * all;
    if (expected > text.capacity()) text.reserve(2 * expected);
  }

  // The processor's version is a property of the company file, not a record.
  void Host() {
    fmt::format_to(
        std::back_inserter(text),
        "<HostRet>\n<ProductName>krnqb company file</ProductName>\n<MajorVersion>{}</MajorVersion>\n"
        "<MinorVersion>{}</MinorVersion>\n",
        processorVersion_.substr(0, 1), processorVersion_.substr(2));
    for (const std::string_view version : qbxmlVersions) {
      if (VersionOrder(version) > VersionOrder(processorVersion_)) break;
      fmt::format_to(std::back_inserter(text), "<SupportedQBXMLVersion>{}</SupportedQBXMLVersion>\n",
                     version);
    }
    text += "</HostRet>\n";
  }

  const Database& database_;
  std::string_view processorVersion_;
};

}  // namespace

std::string AnswerRequests(const Database& database, std::string_view processorVersion,
                           std::span<const CompanyRequest> requests, std::string used) {
  AnswerWriter writer(database, processorVersion);
  writer.text = std::move(used);
  writer.text = "<?xml version=\"1.0\" ?>\n<QBXML>\n";
  if (requests.empty()) return writer.text + "<QBXMLMsgsRs />\n</QBXML>\n";
  writer.text += "<QBXMLMsgsRs>\n";
  for (const CompanyRequest& request : requests) writer.Answer(request);
  writer.text += "</QBXMLMsgsRs>\n</QBXML>\n";
  return std::move(writer.text);
}

}  // namespace krnqb::company
