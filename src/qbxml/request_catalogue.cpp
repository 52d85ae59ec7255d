#include "qbxml/request_catalogue.h"

#include <fmt/format.h>

#include <vector>

#include "qbxml/envelope.h"

namespace krnqb {
namespace {

using Lines = std::vector<std::string>;

Lines AccountQuery(std::int32_t number, std::string_view accountType) {
  return {fmt::format("<AccountQueryRq requestID=\"{}\">", number),
          fmt::format("<AccountType>{}</AccountType>", accountType), "</AccountQueryRq>"};
}

Lines TransactionQuery(std::int32_t number, std::string_view kind, std::string_view fromDate,
                       std::string_view toDate) {
  return {
      fmt::format("<{}QueryRq requestID=\"{}\">{}", kind, number, BuildTxnDateRangeFilter(fromDate, toDate)),
      "<IncludeLineItems>1</IncludeLineItems>", fmt::format("</{}QueryRq>", kind)};
}

Lines UnfilteredQuery(std::int32_t number, std::string_view kind) {
  return {fmt::format("<{}QueryRq requestID=\"{}\">", kind, number), fmt::format("</{}QueryRq>", kind)};
}

Lines EmptyQuery(std::int32_t number, std::string_view kind) {
  return {fmt::format("<{}QueryRq requestID=\"{}\"/>", kind, number)};
}

Lines SummaryReport(std::string_view reportType, std::string_view accountTypeFilter,
                    std::string_view fromDate, std::string_view toDate) {
  return {"<GeneralSummaryReportQueryRq>",
          fmt::format("<GeneralSummaryReportType>{}</GeneralSummaryReportType>", reportType),
          fmt::format("<ReportPeriod><FromReportDate>{}</FromReportDate><ToReportDate>{}</ToReportDate>"
                      "</ReportPeriod>",
                      fromDate, toDate),
          fmt::format("<ReportAccountFilter><AccountTypeFilter>{}</AccountTypeFilter></ReportAccountFilter>",
                      accountTypeFilter),
          "<SummarizeColumnsBy>Month</SummarizeColumnsBy>",
          "</GeneralSummaryReportQueryRq>"};
}

Lines MessageLines(std::int32_t number, std::string_view fromDate, std::string_view toDate) {
  switch (number) {
    case request_number::incomeAccounts:
      return AccountQuery(number, "Income");
    case request_number::costAccounts:
      return AccountQuery(number, "CostOfGoodsSold");
    case request_number::expenseAccounts:
      return AccountQuery(number, "Expense");
    case request_number::undatedBills:
      return UnfilteredQuery(number, "Bill");
    case request_number::bills:
      return TransactionQuery(number, "Bill", fromDate, toDate);
    case request_number::checks:
      return TransactionQuery(number, "Check", fromDate, toDate);
    case request_number::creditCardCharges:
      return TransactionQuery(number, "CreditCardCharge", fromDate, toDate);
    case request_number::invoices:
      return TransactionQuery(number, "Invoice", fromDate, toDate);
    case request_number::salesReceipts:
      return TransactionQuery(number, "SalesReceipt", fromDate, toDate);
    case request_number::items:
      return UnfilteredQuery(number, "Item");
    case request_number::allAccounts:
      return UnfilteredQuery(number, "Account");
    case request_number::host:
      return EmptyQuery(number, "Host");
    case request_number::company:
      return EmptyQuery(number, "Company");
    case request_number::preferences:
      return EmptyQuery(number, "Preferences");
    case request_number::incomeByMonth:
      return SummaryReport("ProfitAndLossStandard", "OrdinaryIncome", fromDate, toDate);
    case request_number::expenseByMonth:
      return SummaryReport("ProfitAndLossStandard", "OrdinaryExpense", fromDate, toDate);
    case request_number::costByMonth:
      return SummaryReport("ProfitAndLossStandard", "CostOfSales", fromDate, toDate);
    case request_number::balanceSheetByType:
      return SummaryReport("BalanceSheetStandard", accountTypePlaceholder, fromDate, toDate);
    default:
      return {};
  }
}

// Summary reports require 2.0 and preferences 1.1; all other requests use the oldest version, which every
// QuickBooks accepts.
std::string_view VersionOf(std::int32_t number) {
  switch (number) {
    case request_number::preferences:
      return "1.1";
    case request_number::incomeByMonth:
    case request_number::expenseByMonth:
    case request_number::costByMonth:
    case request_number::balanceSheetByType:
      return "2.0";
    default:
      return "1.0";
  }
}

}  // namespace

std::string BuildRequest(std::int32_t number, std::string_view fromDate, std::string_view toDate) {
  std::string document = EnvelopeHead(VersionOf(number));
  for (const std::string& line : MessageLines(number, fromDate, toDate)) document += "\r\n" + line;
  return document += "\r\n" + EnvelopeTail();
}

std::string BuildTxnDateRangeFilter(std::string_view fromDate, std::string_view toDate) {
  if (fromDate.empty() && toDate.empty()) return {};
  return fmt::format(
      "<TxnDateRangeFilter><FromTxnDate>{}</FromTxnDate><ToTxnDate>{}</ToTxnDate></TxnDateRangeFilter>",
      fromDate, toDate);
}

}  // namespace krnqb
