#include "company/records/request.h"

#include "company/records/errors.h"
#include "company/testing.h"
#include "qbxml/request_catalogue.h"

namespace krnqb::company {
namespace {

using testing::Request;
using tests::ThrownError;

TEST(CompanyRequest, AcceptsTheHeadsOfItsVersionAndEarlierOnes) {
  const std::vector<std::string_view> versions = {"1.0", "1.1", "2.0"};
  for (std::size_t processor = 0; processor < 3; ++processor) {
    for (std::size_t document = 0; document < 3; ++document) {
      SCOPED_TRACE(std::string(versions[document]) + " sent to " + std::string(versions[processor]));
      const std::string request = Request(versions[document], "<HostQueryRq requestID=\"100\"/>");
      if (document <= processor) {
        EXPECT_EQ(ParseRequests(request, versions[processor]).at(0).subject, RequestSubject::Host);
      } else {
        EXPECT_EQ(ThrownError([&] { ParseRequests(request, versions[processor]); }).Number(),
                  company_error::cannotParse);
      }
    }
  }
}

TEST(CompanyRequest, RefusesAnyOtherHead) {
  const std::string body = "\r\n<HostQueryRq requestID=\"100\"/>\r\n" + EnvelopeTail();
  const std::string messageSet = "<QBXML>\r\n<QBXMLMsgsRq onError=\"continueOnError\">";
  const std::string stoppingMessageSet = "<QBXML>\r\n<QBXMLMsgsRq onError=\"stopOnError\">";
  const std::vector<std::string> heads = {
      "",
      messageSet,
      "<?xml version=\"1.0\"?>\r\n" + messageSet,
      "<?xml version=\"1.0\"?>\r\n<?qbxml version=\"3.0\"?>\r\n" + messageSet,
      "<?xml version=\"1.0\"?>\n<?qbxml version=\"2.0\"?>\n" + messageSet,
      "<?xml version=\"1.0\"?>\r\n<?qbxml version=\"2.0\"?>\r\n" + stoppingMessageSet,
      " " + EnvelopeHead("2.0"),
  };
  for (const std::string& head : heads) {
    SCOPED_TRACE(head);
    EXPECT_EQ(ThrownError([&] { ParseRequests(head + body, "2.0"); }).Number(), company_error::cannotParse);
  }
}

TEST(CompanyRequest, ReadsTheMessagesInOrder) {
  const auto requests =
      ParseRequests(Request("1.0",
                            "<AccountQueryRq requestID=\"4\">\r\n<AccountType>Expense</AccountType>"
                            "\r\n</AccountQueryRq>\r\n<ItemQueryRq>\r\n</ItemQueryRq>"),
                    "1.0");
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_EQ(requests[0].subject, RequestSubject::Accounts);
  EXPECT_EQ(requests[0].requestId, "4");
  EXPECT_EQ(requests[0].accountTypes, std::vector<std::string>{"Expense"});
  EXPECT_EQ(requests[1].subject, RequestSubject::Items);
  EXPECT_EQ(requests[1].requestId, std::nullopt);
}

TEST(CompanyRequest, ReadsADateRangeWithEitherEndOpen) {
  struct Case {
    std::string_view filter, from, to;
  };
  const std::vector<Case> cases = {
      {"", "", ""},
      {"<TxnDateRangeFilter><FromTxnDate>2002-01-01</FromTxnDate><ToTxnDate>2002-01-31</ToTxnDate>"
       "</TxnDateRangeFilter>",
       "2002-01-01", "2002-01-31"},
      {"<TxnDateRangeFilter><FromTxnDate></FromTxnDate><ToTxnDate>2002-01-31</ToTxnDate>"
       "</TxnDateRangeFilter>",
       "", "2002-01-31"},
      {"<TxnDateRangeFilter><FromTxnDate>2002-01-01</FromTxnDate><ToTxnDate/></TxnDateRangeFilter>",
       "2002-01-01", ""},
      {"<TxnDateRangeFilter><ToTxnDate>2002-01-31</ToTxnDate></TxnDateRangeFilter>", "", "2002-01-31"},
  };
  for (const auto& [filter, from, to] : cases) {
    SCOPED_TRACE(filter);
    const auto request =
        ParseRequests(Request("1.0", "<BillQueryRq>" + std::string(filter) + "</BillQueryRq>"), "1.0").at(0);
    EXPECT_EQ(request.fromDate, from);
    EXPECT_EQ(request.toDate, to);
    EXPECT_FALSE(request.includeLines);
  }
}

TEST(CompanyRequest, ReadsTheReportsOfTheCatalogue) {
  const auto read = [](std::int32_t number) {
    return ParseRequests(BuildRequest(number, "2002-01-01", "2002-12-31"), "2.0").at(0);
  };
  const auto income = read(request_number::incomeByMonth);
  EXPECT_EQ(income.subject, RequestSubject::Report);
  EXPECT_EQ(income.requestId, std::nullopt);
  EXPECT_EQ(income.reportType, "ProfitAndLossStandard");
  EXPECT_EQ(income.fromDate, "2002-01-01");
  EXPECT_EQ(income.toDate, "2002-12-31");
  EXPECT_EQ(income.accountTypeFilter, "OrdinaryIncome");
  EXPECT_EQ(income.columns, "Month");
  EXPECT_EQ(read(request_number::balanceSheetByType).reportType, "BalanceSheetStandard");
  EXPECT_EQ(ParseRequests(BuildRequest(request_number::costByMonth, "", ""), "2.0").at(0).toDate, "");
}

TEST(CompanyRequest, RefusesAnInvalidReportRequest) {
  const std::string type = "<GeneralSummaryReportType>ProfitAndLossStandard</GeneralSummaryReportType>";
  const std::string period = "<ReportPeriod><FromReportDate/><ToReportDate/></ReportPeriod>";
  const std::string filter =
      "<ReportAccountFilter><AccountTypeFilter>Bank</AccountTypeFilter></ReportAccountFilter>";
  const std::string columns = "<SummarizeColumnsBy>Month</SummarizeColumnsBy>";
  struct Case {
    std::string message;
    std::string_view reason;
  };
  const std::vector<Case> cases = {
      {period + type + filter + columns, "has no GeneralSummaryReportType"},
      {"", "has no GeneralSummaryReportType"},
      {type + filter + period + columns, "ReportPeriod is not allowed here"},
      {type + period + columns + filter, "ReportAccountFilter is not allowed here"},
      {type + type, "GeneralSummaryReportType is not allowed here"},
      {type + "<ReportPeriod><ToReportDate/><FromReportDate/></ReportPeriod>",
       "FromReportDate is not allowed here in ReportPeriod"},
      {type + "<ReportPeriod><FromReportDate>2002-02-29</FromReportDate></ReportPeriod>",
       "\"2002-02-29\" is not a valid FromReportDate"},
      {type + "<ReportAccountFilter><FullName>Sales</FullName></ReportAccountFilter>",
       "FullName is not allowed here in ReportAccountFilter"},
  };
  for (const auto& [message, reason] : cases) {
    SCOPED_TRACE(message);
    const std::string request =
        Request("2.0", "<GeneralSummaryReportQueryRq>" + message + "</GeneralSummaryReportQueryRq>");
    const Error error = ThrownError([&] { ParseRequests(request, "2.0"); });
    EXPECT_EQ(error.Number(), company_error::cannotParse);
    EXPECT_NE(error.Description().find(reason), std::string::npos) << error.Description();
  }
}

TEST(CompanyRequest, RefusesInvalidMessages) {
  struct Case {
    std::string_view messages, reason;
  };
  const std::vector<Case> cases = {
      {"<HostQueryRq requestID=\"1\"> </HostQueryRq>", "HostQueryRq must be empty"},
      {"<HostQueryRq requestID=\"1\">\r\n</HostQueryRq>", "HostQueryRq must be empty"},
      {"<CompanyQueryRq><!-- none --></CompanyQueryRq>", "CompanyQueryRq must be empty"},
      {"<PreferencesQueryRq><X/></PreferencesQueryRq>", "PreferencesQueryRq must be empty"},
      {"<AccountQueryRq><AccountType>Caf\xC3\xA9</AccountType></AccountQueryRq>", "a non-ASCII character"},
      {"<AccountQueryRq><AccountType>Sales</AccountType></AccountQueryRq>",
       "\"Sales\" is not a valid AccountType"},
      {"<AccountQueryRq><AccountType> Income </AccountType></AccountQueryRq>",
       "\" Income \" is not a valid AccountType"},
      {"<AccountQueryRq><AccountType><A/></AccountType></AccountQueryRq>",
       "AccountType cannot contain elements"},
      {"<AccountQueryRq><IncludeLineItems>1</IncludeLineItems></AccountQueryRq>",
       "IncludeLineItems is not allowed here in AccountQueryRq"},
      {"<AccountQueryRq>all</AccountQueryRq>", "AccountQueryRq contains text"},
      {"<AccountQueryRq>all<AccountType>Bank</AccountType></AccountQueryRq>",
       "AccountQueryRq contains text between its elements"},
      {"<AccountQueryRq iterator=\"Start\"></AccountQueryRq>", "AccountQueryRq has an unexpected attribute"},
      {"<AccountQueryRq><AccountType a=\"1\">Bank</AccountType></AccountQueryRq>",
       "AccountType has an unexpected attribute"},
      {"<BillQueryRq><IncludeLineItems>1</IncludeLineItems><TxnDateRangeFilter></TxnDateRangeFilter>"
       "</BillQueryRq>",
       "TxnDateRangeFilter is not allowed here in BillQueryRq"},
      {"<BillQueryRq><TxnDateRangeFilter><ToTxnDate/><FromTxnDate/></TxnDateRangeFilter></BillQueryRq>",
       "FromTxnDate is not allowed here in TxnDateRangeFilter"},
      {"<BillQueryRq><TxnDateRangeFilter><FromTxnDate>2002-02-30</FromTxnDate></TxnDateRangeFilter></"
       "BillQueryRq>",
       "\"2002-02-30\" is not a valid FromTxnDate"},
      {"<BillQueryRq><IncludeLineItems>yes</IncludeLineItems></BillQueryRq>",
       "\"yes\" is not a valid IncludeLineItems"},
      {"<BillQuery/>", "BillQuery is not a request"},
      {"<BillQueryRq>", "tag"},
      {"</QBXMLMsgsRq><QBXMLMsgsRq>", "QBXMLMsgsRq follows QBXMLMsgsRq"},
      {"<GeneralSummaryReportQueryRq></GeneralSummaryReportQueryRq>",
       "qbXML 1.1 has no GeneralSummaryReportQueryRq"},
  };
  for (const auto& [messages, reason] : cases) {
    SCOPED_TRACE(messages);
    const Error error = ThrownError([&] { ParseRequests(Request("1.1", messages), "2.0"); });
    EXPECT_EQ(error.Number(), company_error::cannotParse);
    EXPECT_NE(error.Description().find(reason), std::string::npos) << error.Description();
  }
}

TEST(CompanyRequest, AcceptsBothFormsOfAnEmptyRequest) {
  for (const std::string_view message : {"<HostQueryRq/>", "<HostQueryRq></HostQueryRq>"}) {
    EXPECT_EQ(ParseRequests(Request("1.0", message), "1.0").at(0).subject, RequestSubject::Host);
  }
}

TEST(CompanyRequest, IgnoresTheContentsOfAnUnknownRequest) {
  const auto request =
      ParseRequests(Request("1.0", "<VendorQueryRq requestID=\"7\"><Any>thing</Any></VendorQueryRq>"), "1.0")
          .at(0);
  EXPECT_EQ(request.subject, RequestSubject::Unsupported);
  EXPECT_EQ(request.name, "VendorQueryRq");
}

}  // namespace
}  // namespace krnqb::company
