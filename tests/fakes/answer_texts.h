#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace krnqb::fakes {

// Builders of QuickBooks' answers. All arguments are XML and inserted without escaping.

/// Returns an answer document around the given ...Rs elements, with the head and the line ends that
/// QuickBooks writes.
inline std::string Answer(const std::string& messages) {
  return "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>\n" + messages + "</QBXMLMsgsRs>\n</QBXML>\n";
}

inline std::string Element(std::string_view name, std::string_view text) {
  return "<" + std::string(name) + ">" + std::string(text) + "</" + std::string(name) + ">\n";
}

/// Returns the record of a top-level account.
inline std::string Account(std::string_view listId, std::string_view name) {
  return "<AccountRet>\n" + Element("ListID", listId) + Element("Name", name) + Element("Sublevel", "0") +
         "</AccountRet>\n";
}

inline std::string SubAccount(std::string_view listId, std::string_view name, std::string_view parentListId,
                              std::string_view sublevel = "1") {
  return "<AccountRet>\n" + Element("ListID", listId) + Element("Name", name) + "<ParentRef>\n" +
         Element("ListID", parentListId) + "</ParentRef>\n" + Element("Sublevel", sublevel) +
         "</AccountRet>\n";
}

/// Returns the answer to an account query.
inline std::string AccountAnswer(std::string_view requestId, std::initializer_list<std::string> accounts) {
  std::string records;
  for (const std::string& account : accounts) records += account;
  return Answer("<AccountQueryRs requestID=\"" + std::string(requestId) +
                "\" statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\">\n" + records +
                "</AccountQueryRs>\n");
}

/// Returns the answer to request 100, with the supported versions.
inline std::string HostAnswer(std::initializer_list<std::string_view> versions) {
  std::string host =
      "<HostQueryRs requestID=\"100\" statusCode=\"0\" statusSeverity=\"Info\" "
      "statusMessage=\"Status OK\">\n<HostRet>\n" +
      Element("ProductName", "QuickBooks Pro 2002");
  for (const std::string_view version : versions) host += Element("SupportedQBXMLVersion", version);
  return Answer(host + "</HostRet>\n</HostQueryRs>\n");
}

/// Returns the answer to request 101 with the given content.
inline std::string CompanyAnswerWith(const std::string& content) {
  return Answer(
      "<CompanyQueryRs requestID=\"101\" statusCode=\"0\" statusSeverity=\"Info\" "
      "statusMessage=\"Status OK\">\n" +
      content + "</CompanyQueryRs>\n");
}

inline std::string CompanyAnswer(std::string_view firstMonth) {
  return CompanyAnswerWith("<CompanyRet>\n" + Element("CompanyName", "Nursery") +
                           Element("FirstMonthFiscalYear", firstMonth) + "</CompanyRet>\n");
}

/// Returns an answer to request 101 without a company.
inline std::string NoCompanyAnswer() {
  return CompanyAnswerWith("");
}

/// A record in a selection of expense accounts.
struct SelectionRecord {
  std::string_view id;
  std::string_view selected;
};
/// Returns a selection of expense accounts.
inline std::string SelectionText(std::initializer_list<SelectionRecord> records) {
  std::string text = "<expenseAccounts>";
  for (const SelectionRecord& record : records) {
    text += "<account id=\"" + std::string(record.id) + "\" selected=\"" + std::string(record.selected) +
            "\"><name>any</name></account>";
  }
  return text + "</expenseAccounts>";
}

}  // namespace krnqb::fakes
