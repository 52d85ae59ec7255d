#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <vector>

#include "company/testing.h"
#include "qbxml/request_catalogue.h"

namespace krnqb::company::testing {

/// The fields of an account's record; empty ones are omitted.
struct AccountFields {
  std::string_view id, type, name, parent = {}, number = {}, balance = {};
};

inline std::string Element(std::string_view name, std::string_view text) {
  return text.empty() ? std::string() : fmt::format("<{0}>{1}</{0}>\n", name, text);
}

inline std::string Reference(std::string_view name, std::string_view id) {
  return id.empty() ? std::string() : fmt::format("<{0}><ListID>{1}</ListID></{0}>\n", name, id);
}

inline std::string AccountRecord(const AccountFields& fields) {
  return Element("AccountRet",
                 Element("ListID", fields.id) + Element("Name", fields.name) +
                     Reference("ParentRef", fields.parent) + Element("AccountType", fields.type) +
                     Element("AccountNumber", fields.number) + Element("Balance", fields.balance));
}

inline std::string AccountDocument(const std::vector<AccountFields>& accounts) {
  std::string records;
  for (const AccountFields& fields : accounts) records += AccountRecord(fields);
  return Accounts(records);
}

inline std::string ExpenseLine(std::string_view account, std::string_view amount) {
  return Element("ExpenseLineRet", Reference("AccountRef", account) + Element("Amount", amount));
}

/// Returns an item line with the element name that its transaction uses.
inline std::string ItemLine(std::string_view element, std::string_view item, std::string_view amount,
                            std::string_view quantity = {}) {
  return Element(element,
                 Reference("ItemRef", item) + Element("Quantity", quantity) + Element("Amount", amount));
}

/// Returns a transaction record; `kind` "Bill" makes a BillRet.
inline std::string TransactionRecord(std::string_view kind, std::string_view id, std::string_view date,
                                     std::string_view content) {
  return Element(std::string(kind) + "Ret",
                 Element("TxnID", id) + Element("TxnDate", date) + std::string(content));
}

inline std::string TransactionDocument(std::string_view kind, std::string_view records) {
  return Response(Element(std::string(kind) + "QueryRs", records));
}

inline std::string Preferences(std::string_view usesAccountNumbers) {
  return Response(Element(
      "PreferencesQueryRs",
      Element("PreferencesRet",
              Element("AccountingPreferences", Element("IsUsingAccountNumbers", usesAccountNumbers)))));
}

inline std::string ProfitAndLossRequest(std::string_view filter, std::string_view from, std::string_view to) {
  return Request("2.0",
                 fmt::format("<GeneralSummaryReportQueryRq>\r\n"
                             "<GeneralSummaryReportType>ProfitAndLossStandard</GeneralSummaryReportType>"
                             "\r\n<ReportPeriod><FromReportDate>{}</FromReportDate><ToReportDate>{}"
                             "</ToReportDate></ReportPeriod>\r\n<ReportAccountFilter>"
                             "<AccountTypeFilter>{}</AccountTypeFilter></ReportAccountFilter>\r\n"
                             "<SummarizeColumnsBy>Month</SummarizeColumnsBy>\r\n"
                             "</GeneralSummaryReportQueryRq>",
                             from, to, filter));
}

/// Returns the catalogue's request for the balance sheet, with the account type filled in.
inline std::string BalanceSheetRequest(std::string_view filter, std::string_view day) {
  std::string request = BuildRequest(request_number::balanceSheetByType, day, day);
  request.replace(request.find(accountTypePlaceholder), accountTypePlaceholder.size(), filter);
  return request;
}

/// Returns the rows of a report, each as "DataRow Sales:Plants | Plants | 1.00 | 2.00": kind, account if any,
/// label, amounts. Fails the test if the rows are not numbered from 1 or a column is missing.
inline std::vector<std::string> RowsOf(const std::string& answer) {
  std::vector<std::string> rows;
  int number = 0;
  for (const XmlElement& row : XmlElement::Parse(answer).SelectAll("//ReportData/*")) {
    EXPECT_EQ(row.Attribute("rowNumber"), std::to_string(++number));
    std::string text = row.Name();
    if (const XmlElement account = row.Child("RowData"))
      text += " " + account.Attribute("value").value_or("");
    if (row.Name() == "TextRow") text += " | " + row.Attribute("value").value_or("");
    int column = 0;
    for (const XmlElement& cell : row.SelectAll("ColData")) {
      EXPECT_EQ(cell.Attribute("colID"), std::to_string(++column));
      text += " | " + cell.Attribute("value").value_or("");
    }
    rows.push_back(std::move(text));
  }
  return rows;
}

/// Returns the titles of a report's columns of amounts.
inline std::vector<std::string> ColumnTitlesOf(const std::string& answer) {
  std::vector<std::string> titles;
  for (const XmlElement& title : XmlElement::Parse(answer).SelectAll("//ColDesc[@colID > 1]/ColTitle")) {
    titles.push_back(title.Attribute("value").value_or(""));
  }
  return titles;
}

}  // namespace krnqb::company::testing
