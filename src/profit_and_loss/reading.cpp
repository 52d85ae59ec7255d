#include "profit_and_loss/reading.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "krnqb/error.h"
#include "profit_and_loss/csv_report.h"
#include "profit_and_loss/detail.h"
#include "profit_and_loss/merging.h"
#include "profit_and_loss/messages.h"
#include "profit_and_loss/qbxml_reports.h"
#include "profit_and_loss/report.h"
#include "profit_and_loss/summary.h"
#include "profit_and_loss/text_encoding.h"
#include "profit_and_loss/words.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::size_t mostBytes = std::size_t{256} << 20U;

void RefuseOtherReports(const CapturedReport& report) {
  for (const std::string_view other : {"balance sheet", "trial balance", "cash flow", "general ledger"}) {
    if (!Contains(report.title, other)) continue;
    Refuse(report.document, fmt::format("the report is {}, not a profit and loss", Quoted(report.title)),
           "give a profit and loss");
  }
}

ProfitAndLoss ReadReport(const CapturedReport& report) {
  try {
    return report.detail ? ReadDetail(report) : ReadSummary(report);
  } catch (const Error& error) {
    if (error.Kind() != ErrorKind::Overflow) throw;
    throw Error(error_number::overflow,
                fmt::format("{}: the amounts add up to more than 9 trillion; correct them in the document",
                            report.document));
  }
}

ProfitAndLoss Interpret(CapturedReport& report) {
  RefuseOtherReports(report);
  ProfitAndLoss statement = ReadReport(report);
  statement.document = report.document;
  statement.title = std::move(report.title);
  statement.company = std::move(report.company);
  statement.basis = std::move(report.basis);
  statement.hasMonths =
      !statement.columns.empty() && std::ranges::all_of(statement.columns, [](const StatementColumn& column) {
        return column.month.has_value();
      });
  statement.findings.insert(statement.findings.begin(), report.findings.begin(), report.findings.end());
  return statement;
}

std::vector<CapturedReport> CaptureReports(std::string_view documentName, const std::string& text) {
  const std::string_view begin = Trimmed(text);
  if (begin.starts_with('<')) {
    if (BeginsWith(begin, "<!doctype html") || BeginsWith(begin, "<html")) {
      Refuse(documentName, "the document is an HTML page, not a report",
             "give a profit and loss as CSV, or QuickBooks' answer to a report request");
    }
    return CaptureQbxmlReports(documentName, text);
  }
  std::vector<CapturedReport> reports;
  reports.push_back(CaptureCsvReport(documentName, text));
  return reports;
}

}  // namespace

ProfitAndLoss ReadProfitAndLoss(std::string_view documentName, std::string_view bytes) {
  if (bytes.size() > mostBytes)
    Refuse(documentName, "the document is larger than 256 MiB", "give fewer months at once");
  std::vector<CapturedReport> reports = CaptureReports(documentName, DocumentText(documentName, bytes));
  std::vector<ProfitAndLoss> statements;
  for (CapturedReport& report : reports) {
    statements.push_back(Interpret(report));
    report.rows = {};
  }
  if (statements.size() == 1) return std::move(statements.front());
  ProfitAndLoss merged = MergeStatements(std::move(statements));
  merged.document = documentName;
  return merged;
}

}  // namespace krnqb::profit_and_loss
