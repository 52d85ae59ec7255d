#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "company/file.h"
#include "qbxml/envelope.h"
#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::company::testing {

/// Returns a request document with these messages in the envelope of that version.
inline std::string Request(std::string_view version, std::string_view messages) {
  return EnvelopeHead(version) + "\r\n" + std::string(messages) + "\r\n" + EnvelopeTail();
}

/// Returns a response document with these answers.
inline std::string Response(std::string_view answers) {
  return "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>\n" + std::string(answers) +
         "</QBXMLMsgsRs>\n</QBXML>\n";
}

/// Returns the shortest account record that can be loaded.
inline std::string Account(std::string_view id, std::string_view type, std::string_view parent = {}) {
  std::string account = "<AccountRet>\n<ListID>" + std::string(id) + "</ListID>\n";
  if (!parent.empty()) account += "<ParentRef>\n<ListID>" + std::string(parent) + "</ListID>\n</ParentRef>\n";
  return account + "<AccountType>" + std::string(type) + "</AccountType>\n</AccountRet>\n";
}

inline std::string Accounts(std::string_view records) {
  return Response("<AccountQueryRs>\n" + std::string(records) + "</AccountQueryRs>\n");
}

/// Returns the texts of all elements of a path in an answer, in order.
inline std::vector<std::string> TextsOf(const std::string& answer, const std::string& path) {
  std::vector<std::string> texts;
  for (const XmlElement& element : XmlElement::Parse(answer).SelectAll(path)) texts.push_back(element.Text());
  return texts;
}

/// A test with its own new company, whose fiscal year begins in April.
class CompanyTest : public ::testing::Test {
 protected:
  CompanyFile NewCompany(std::string_view processorVersion) {
    return CompanyFile::Create(folder / "company.qbw", "Green Nursery", 4, processorVersion);
  }

  tests::TemporaryFolder folder;
};

}  // namespace krnqb::company::testing
