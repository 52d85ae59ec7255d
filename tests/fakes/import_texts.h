#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "fakes/answer_texts.h"

namespace krnqb::fakes {

// Builders of the transactions, items and reports in QuickBooks' answers. All arguments are XML and inserted
// without escaping. Records are built from their fields: ExpenseLine(AccountRef("E-1") + Amount("75.00")).

inline std::string Reference(std::string_view name, std::string_view listId) {
  return Element(name, Element("ListID", listId));
}
inline std::string AccountRef(std::string_view listId) {
  return Reference("AccountRef", listId);
}
inline std::string ItemRef(std::string_view listId) {
  return Reference("ItemRef", listId);
}
inline std::string ItemGroupRef(std::string_view listId) {
  return Reference("ItemGroupRef", listId);
}
inline std::string CustomerRef(std::string_view listId) {
  return Reference("CustomerRef", listId);
}
inline std::string Amount(std::string_view text) {
  return Element("Amount", text);
}
inline std::string Quantity(std::string_view text) {
  return Element("Quantity", text);
}

inline std::string ExpenseLine(std::string_view fields) {
  return Element("ExpenseLineRet", fields);
}
inline std::string ItemLine(std::string_view fields) {
  return Element("ItemLineRet", fields);
}
inline std::string InvoiceLine(std::string_view fields) {
  return Element("InvoiceLineRet", fields);
}
inline std::string SalesReceiptLine(std::string_view fields) {
  return Element("SalesReceiptLineRet", fields);
}

/// Returns the head of a transaction: its id and its date.
inline std::string Transaction(std::string_view id, std::string_view date) {
  return Element("TxnID", id) + Element("TxnDate", date);
}

/// Returns an answer with the given response element, such as "BillQueryRs", around records.
inline std::string RecordAnswer(const std::string& responseName, const std::string& records) {
  return Answer("<" + responseName +
                " requestID=\"1\" statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\">\n" +
                records + "</" + responseName + ">\n");
}
/// Returns an answer with an error status and no records.
inline std::string StatusAnswer(const std::string& responseName, std::string_view statusCode) {
  return Answer("<" + responseName + R"( requestID="1" statusCode=")" + std::string(statusCode) +
                "\" statusSeverity=\"Error\" statusMessage=\"Refused\" />\n");
}

/// Returns an item of a kind, such as "ItemServiceRet".
inline std::string Item(std::string_view kind, std::string_view listId, std::string_view fields) {
  return Element(kind, Element("ListID", listId) + std::string(fields));
}
/// Returns an item with a single account for purchases and sales.
inline std::string OneAccountItem(std::string_view listId, std::string_view accountId) {
  return Item("ItemServiceRet", listId, Element("SalesOrPurchase", AccountRef(accountId)));
}
/// Returns an item with separate accounts for sales and purchases.
inline std::string TwoAccountItem(std::string_view listId, std::string_view incomeId,
                                  std::string_view expenseId) {
  return Item("ItemNonInventoryRet", listId,
              Element("SalesAndPurchase",
                      Reference("IncomeAccountRef", incomeId) + Reference("ExpenseAccountRef", expenseId)));
}
inline std::string InventoryItem(std::string_view listId, std::string_view incomeId, std::string_view costId,
                                 std::string_view averageCost) {
  return Item("ItemInventoryRet", listId,
              Reference("IncomeAccountRef", incomeId) + Reference("COGSAccountRef", costId) +
                  Element("AverageCost", averageCost));
}
inline std::string ItemAnswer(const std::string& items) {
  return RecordAnswer("ItemQueryRs", items);
}

/// Returns a row of a report: the account's full name and the amounts in the columns after the label.
inline std::string ReportRow(const std::string& accountName, std::initializer_list<std::string_view> amounts,
                             const std::string& kind = "DataRow") {
  std::string row = "<" + kind + R"( rowNumber="1"><RowData rowType="account" value=")" + accountName +
                    R"(" /><ColData colID="1" value=")" + accountName + "\" />";
  int column = 1;
  for (const std::string_view amount : amounts) {
    row += "<ColData colID=\"" + std::to_string(++column) + "\" value=\"" + std::string(amount) + "\" />";
  }
  return row + "</" + kind + ">\n";
}
inline std::string ReportAnswer(const std::string& rows) {
  return Answer(
      "<GeneralSummaryReportQueryRs statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\">\n"
      "<ReportRet>\n<ReportTitle>Report</ReportTitle>\n<ReportData>\n" +
      rows + "</ReportData>\n</ReportRet>\n</GeneralSummaryReportQueryRs>\n");
}

}  // namespace krnqb::fakes
