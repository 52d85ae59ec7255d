#include <fmt/format.h>

#include "company/records/errors.h"
#include "company/testing.h"

namespace krnqb::company {
namespace {

using testing::Account;
using testing::Accounts;
using testing::Request;
using testing::Response;
using testing::TextsOf;

class CompanyAnswer : public testing::CompanyTest {};

constexpr std::string_view okStatus =
    " statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\">\n";
constexpr std::string_view noMatchStatus =
    " statusCode=\"1\" statusSeverity=\"Info\""
    " statusMessage=\"A query request did not find a matching object in QuickBooks\" />\n";

std::string Answered(std::string_view begin, std::string_view status, std::string_view records = {},
                     std::string_view end = {}) {
  return Response(std::string(begin) + std::string(status) + std::string(records) + std::string(end));
}

TEST_F(CompanyAnswer, ContainsARecordExactly) {
  CompanyFile company = NewCompany("1.1");
  const std::string record =
      "<AccountRet>\n<ListID>20000-933270541</ListID>\n<Name>Meals &amp; Entertainment</Name>\n"
      "<Desc>Caf&#233; &lt;&quot;Lion&apos;s&quot;&gt;</Desc>\n<BankNumber "
      "/>\n<AccountType>Expense</AccountType>\n"
      "<Balance>0.00</Balance>\n</AccountRet>\n";
  company.Load("accounts.xml", Accounts(record));
  EXPECT_EQ(company.Answer(Request("1.0", "<AccountQueryRq requestID=\"60\">\r\n</AccountQueryRq>")),
            "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>\n"
            "<AccountQueryRs requestID=\"60\" statusCode=\"0\" statusSeverity=\"Info\" "
            "statusMessage=\"Status OK\">\n" +
                record + "</AccountQueryRs>\n</QBXMLMsgsRs>\n</QBXML>\n");
}

TEST_F(CompanyAnswer, ReportsThatNothingMatches) {
  const CompanyFile company = NewCompany("1.1");
  EXPECT_EQ(company.Answer(Request("1.0", "<ItemQueryRq requestID=\"50\">\r\n</ItemQueryRq>")),
            Answered("<ItemQueryRs requestID=\"50\"", noMatchStatus));
  EXPECT_EQ(company.Answer(Request("1.1", "<PreferencesQueryRq requestID=\"102\"/>")),
            Answered("<PreferencesQueryRs requestID=\"102\"", noMatchStatus));
}

TEST_F(CompanyAnswer, HasNoRequestIdWhenTheRequestHasNone) {
  const CompanyFile company = NewCompany("1.1");
  EXPECT_EQ(company.Answer(Request("1.0", "<ItemQueryRq></ItemQueryRq>")),
            Answered("<ItemQueryRs", noMatchStatus));
}

TEST_F(CompanyAnswer, EscapesTheRequestId) {
  const CompanyFile company = NewCompany("1.1");
  EXPECT_EQ(company.Answer(Request("1.0", "<ItemQueryRq requestID=\"&lt;&#233;&quot;&amp;\"></ItemQueryRq>")),
            Answered("<ItemQueryRs requestID=\"&lt;&#233;&quot;&amp;\"", noMatchStatus));
}

TEST_F(CompanyAnswer, ListsTheVersionsOfItsProcessor) {
  struct Case {
    std::string_view version, digits, supported;
  };
  const std::vector<Case> cases = {
      {"1.0", "<MajorVersion>1</MajorVersion>\n<MinorVersion>0</MinorVersion>\n",
       "<SupportedQBXMLVersion>1.0</SupportedQBXMLVersion>\n"},
      {"1.1", "<MajorVersion>1</MajorVersion>\n<MinorVersion>1</MinorVersion>\n",
       "<SupportedQBXMLVersion>1.0</SupportedQBXMLVersion>\n"
       "<SupportedQBXMLVersion>1.1</SupportedQBXMLVersion>\n"},
      {"2.0", "<MajorVersion>2</MajorVersion>\n<MinorVersion>0</MinorVersion>\n",
       "<SupportedQBXMLVersion>1.0</SupportedQBXMLVersion>\n"
       "<SupportedQBXMLVersion>1.1</SupportedQBXMLVersion>\n"
       "<SupportedQBXMLVersion>2.0</SupportedQBXMLVersion>\n"},
  };
  for (const auto& [version, digits, supported] : cases) {
    SCOPED_TRACE(version);
    const CompanyFile company =
        CompanyFile::Create(folder / (std::string(version) + ".qbw"), "Green Nursery", 1, version);
    EXPECT_EQ(company.Answer(Request("1.0", "<HostQueryRq requestID=\"100\"/>")),
              Answered("<HostQueryRs requestID=\"100\"", okStatus,
                       "<HostRet>\n<ProductName>krnqb company file</ProductName>\n" + std::string(digits) +
                           std::string(supported) + "</HostRet>\n",
                       "</HostQueryRs>\n"));
  }
}

TEST_F(CompanyAnswer, HasTheCompanysNameAndFiscalYear) {
  const CompanyFile company = CompanyFile::Create(folder / "other.qbw", "Bl\xC3\xBCten & Co", 12, "1.0");
  EXPECT_EQ(company.Answer(Request("1.0", "<CompanyQueryRq requestID=\"101\"/>")),
            Answered("<CompanyQueryRs requestID=\"101\"", okStatus,
                     "<CompanyRet>\n<CompanyName>Bl&#252;ten &amp; Co</CompanyName>\n"
                     "<FirstMonthFiscalYear>December</FirstMonthFiscalYear>\n</CompanyRet>\n",
                     "</CompanyQueryRs>\n"));
}

TEST_F(CompanyAnswer, HasTheLoadedPreferences) {
  CompanyFile company = NewCompany("1.1");
  const std::string record =
      "<PreferencesRet>\n<AccountingPreferences>\n<IsUsingAccountNumbers>1</IsUsingAccountNumbers>\n"
      "</AccountingPreferences>\n</PreferencesRet>\n";
  company.Load("preferences.xml", Response("<PreferencesQueryRs>" + record + "</PreferencesQueryRs>"));
  EXPECT_EQ(company.Answer(Request("1.1", "<PreferencesQueryRq requestID=\"102\"/>")),
            Answered("<PreferencesQueryRs requestID=\"102\"", okStatus, record, "</PreferencesQueryRs>\n"));
}

TEST_F(CompanyAnswer, RefusesAnUnknownRequestAndAnswersTheOthers) {
  CompanyFile company = NewCompany("2.0");
  company.Load("accounts.xml", Accounts(Account("1-1", "Bank")));
  EXPECT_EQ(company.Answer(Request("2.0",
                                   "<VendorQueryRq requestID=\"7\"/>\r\n<CustomDetailReportQueryRq>\r\n"
                                   "</CustomDetailReportQueryRq>\r\n<AccountQueryRq/>")),
            Response("<VendorQueryRs requestID=\"7\" statusCode=\"1030\" statusSeverity=\"Error\""
                     " statusMessage=\"This request is not supported.\" />\n"
                     "<CustomDetailReportQueryRs statusCode=\"1030\" statusSeverity=\"Error\""
                     " statusMessage=\"This request is not supported.\" />\n"
                     "<AccountQueryRs" +
                     std::string(okStatus) + Account("1-1", "Bank") + "</AccountQueryRs>\n"));
}

TEST_F(CompanyAnswer, IsEmptyForAMessageSetWithoutRequests) {
  const CompanyFile company = NewCompany("1.1");
  EXPECT_EQ(company.Answer(EnvelopeHead("1.0") + "\r\n" + EnvelopeTail()),
            "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs />\n</QBXML>\n");
}

TEST_F(CompanyAnswer, RefusesAVersionLaterThanTheCompanys) {
  const CompanyFile company = NewCompany("1.0");
  EXPECT_EQ(tests::ThrownError([&] {
              company.Answer(Request("1.1", "<PreferencesQueryRq requestID=\"102\"/>"));
            }).Number(),
            company_error::cannotParse);
}

TEST_F(CompanyAnswer, HasOnlyTheAccountsOfTheRequestedTypes) {
  CompanyFile company = NewCompany("1.1");
  company.Load("accounts.xml", Accounts(Account("e1", "Expense") + Account("i1", "Income") +
                                        Account("e2", "Expense", "e1") + Account("b1", "Bank")));
  const auto idsOf = [&](std::string_view types) {
    return TextsOf(
        company.Answer(Request("1.0", "<AccountQueryRq>" + std::string(types) + "</AccountQueryRq>")),
        "//AccountRet/ListID");
  };
  EXPECT_EQ(idsOf("<AccountType>Expense</AccountType>"), (std::vector<std::string>{"e1", "e2"}));
  EXPECT_EQ(
      idsOf(
          "<AccountType>Expense</AccountType><AccountType>Bank</AccountType><AccountType>Bank</AccountType>"),
      (std::vector<std::string>{"b1", "e1", "e2"}));
  EXPECT_EQ(idsOf("<AccountType>OtherIncome</AccountType>"), std::vector<std::string>{});
  EXPECT_EQ(idsOf(""), (std::vector<std::string>{"b1", "i1", "e1", "e2"}));
}

TEST_F(CompanyAnswer, ListsItemsByKind) {
  const std::vector<std::string_view> kinds = {
      "Service", "NonInventory", "OtherCharge",   "Inventory", "InventoryAssembly", "Subtotal", "Discount",
      "Payment", "SalesTax",     "SalesTaxGroup", "Group"};
  std::string records;
  std::vector<std::string> expected;
  for (const std::string_view kind : kinds) {
    records.insert(0, fmt::format("<Item{0}Ret><ListID>{0}</ListID></Item{0}Ret>", kind));
    expected.emplace_back(kind);
  }
  CompanyFile company = NewCompany("1.1");
  company.Load("items.xml", Response("<ItemQueryRs>" + records + "</ItemQueryRs>"));
  EXPECT_EQ(TextsOf(company.Answer(Request("1.0", "<ItemQueryRq/>")), "//ListID"), expected);
}

}  // namespace
}  // namespace krnqb::company
