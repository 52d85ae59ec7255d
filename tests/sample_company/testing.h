#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "company/file.h"
#include "company/records/amount.h"
#include "qbxml/request_catalogue.h"
#include "sample_company/generator.h"
#include "temporary_folder.h"

namespace krnqb::sample_company::testing {

inline constexpr std::array transactionRequests = {request_number::bills, request_number::checks,
                                                   request_number::creditCardCharges,
                                                   request_number::invoices, request_number::salesReceipts};

/// Returns the settings of a company with all features and two thousand transactions.
inline GeneratorSettings FullCompany() {
  GeneratorSettings settings;
  settings.accounts = 150;
  settings.items = 60;
  settings.customers = 40;
  settings.transactions = 2'000;
  settings.firstYear = 2001;
  settings.lastYear = 2002;
  settings.seed = 7;
  settings.processorVersion = "2.0";
  return settings;
}

/// Returns the same settings without any features.
inline GeneratorSettings PlainCompany() {
  GeneratorSettings settings = FullCompany();
  settings.features = {false, false, false, false, false, false, false};
  return settings;
}

/// A generated company, open for reading.
class GeneratedCompany {
 public:
  explicit GeneratedCompany(const GeneratorSettings& settings)
      : summary(GenerateCompany(folder / "company.qbw", settings)),
        file(company::CompanyFile::Open(folder / "company.qbw", company::FileAccess::ReadOnly)) {}

  std::string Answer(std::int32_t request) const { return file.Answer(BuildRequest(request, "", "")); }

  /// Returns the records of an answer.
  std::vector<XmlElement> Records(std::int32_t request) const {
    return XmlElement::Parse(Answer(request)).SelectAll("/QBXML/QBXMLMsgsRs/*/*");
  }
  std::vector<XmlElement> Accounts() const { return Records(request_number::allAccounts); }
  std::vector<XmlElement> Items() const { return Records(request_number::items); }
  std::vector<XmlElement> Transactions() const {
    std::vector<XmlElement> all;
    for (const std::int32_t request : transactionRequests) {
      for (const XmlElement& record : Records(request)) all.push_back(record);
    }
    return all;
  }

  tests::TemporaryFolder folder;
  GeneratorSummary summary;
  company::CompanyFile file;
};

/// Returns the company's answers to all requests.
inline std::string Contents(const GeneratedCompany& company) {
  std::string contents;
  for (const std::int32_t request : {request_number::company, request_number::preferences,
                                     request_number::allAccounts, request_number::items}) {
    contents += company.Answer(request);
  }
  for (const std::int32_t request : transactionRequests) contents += company.Answer(request);
  return contents;
}

/// Returns the text at a path from an element; empty if the path leads nowhere.
inline std::string TextAt(const XmlElement& element, const std::string& path) {
  const XmlElement found = element.Select(path);
  return found ? found.Text() : std::string();
}

/// Returns the amount at a path, in hundredths; fails the test if the path leads nowhere.
inline std::int64_t AmountAt(const XmlElement& element, const std::string& path) {
  const auto amount = company::Hundredths(TextAt(element, path));
  EXPECT_TRUE(amount) << path << " of " << element.Xml();
  return amount.value_or(0);
}

}  // namespace krnqb::sample_company::testing
