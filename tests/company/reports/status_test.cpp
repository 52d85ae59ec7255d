#include "company/reports/testing.h"

namespace krnqb::company {
namespace {

using testing::AccountDocument;
using testing::BalanceSheetRequest;
using testing::Element;
using testing::ProfitAndLossRequest;
using testing::Request;
using testing::Response;
using testing::RowsOf;

class CompanyReportStatus : public testing::CompanyTest {
 protected:
  CompanyFile company = NewCompany("2.0");
};

std::string Refused(int code, std::string_view message) {
  return Response(fmt::format(
      "<GeneralSummaryReportQueryRs statusCode=\"{}\" statusSeverity=\"Error\" statusMessage=\"{}\" />\n",
      code, message));
}

TEST_F(CompanyReportStatus, IsAnErrorForAnUnknownFilter) {
  company.Load("accounts.xml", AccountDocument({{"a", "FixedAsset", "Depreciation", "", "", "-5.00"},
                                                {"b", "Equity", "Retained Earnings", "", "", "5.00"}}));
  struct Case {
    std::string_view filter, shown;
  };
  const std::vector<Case> cases = {{"Depreciation", "Depreciation"},
                                   {"RetainedEarnings", "RetainedEarnings"},
                                   {"AccountTypeFilterValue", "AccountTypeFilterValue"},
                                   {"equity", "equity"},
                                   {"Caf&#233; &lt;&quot;", "Caf&#233; &lt;&quot;"}};
  for (const auto& [filter, shown] : cases) {
    SCOPED_TRACE(filter);
    const std::string expected = Refused(
        3210,
        fmt::format("The &quot;AccountTypeFilter&quot; field has an invalid value &quot;{}&quot;.", shown));
    EXPECT_EQ(company.Answer(BalanceSheetRequest(filter, "2002-12-31")), expected);
    EXPECT_EQ(company.Answer(ProfitAndLossRequest(filter, "2002-01-01", "2002-12-31")), expected);
  }
}

TEST_F(CompanyReportStatus, IsAnErrorForAPeriodThatEndsBeforeItBegins) {
  EXPECT_EQ(company.Answer(ProfitAndLossRequest("OrdinaryIncome", "2002-02-01", "2002-01-31")),
            Refused(3030, "Invalid date range: From date is greater than To date."));
}

TEST_F(CompanyReportStatus, IsUnsupportedForAnyOtherReport) {
  const std::string type = Element("GeneralSummaryReportType", "ProfitAndLossStandard");
  const std::string filter = Element("ReportAccountFilter", Element("AccountTypeFilter", "OrdinaryIncome"));
  const std::string months = Element("SummarizeColumnsBy", "Month");
  const std::vector<std::string> messages = {
      Element("GeneralSummaryReportType", "SalesByItemSummary") + filter + months,
      type + months,
      type + filter,
      type + filter + Element("SummarizeColumnsBy", "Quarter"),
      type + Element("ReportAccountFilter", " ") + months,
  };
  for (const std::string& message : messages) {
    SCOPED_TRACE(message);
    EXPECT_EQ(company.Answer(Request("2.0", Element("GeneralSummaryReportQueryRq", message))),
              Refused(1030, "This request is not supported."));
  }
}

TEST_F(CompanyReportStatus, IsUnsupportedOnTheCashBasisWithWhatToDo) {
  const auto report = [](std::string_view type, std::string_view basis) {
    return Request(
        "2.0", Element("GeneralSummaryReportQueryRq",
                       Element("GeneralSummaryReportType", type) +
                           Element("ReportAccountFilter", Element("AccountTypeFilter", "OrdinaryIncome")) +
                           Element("SummarizeColumnsBy", "Month") + Element("ReportBasis", basis)));
  };
  for (const std::string_view type : {"ProfitAndLossStandard", "BalanceSheetStandard"}) {
    EXPECT_EQ(company.Answer(report(type, "Cash")),
              Refused(1030,
                      "This request is not supported: a company file has reports on the accrual basis only. "
                      "Ask for ReportBasis Accrual."));
    for (const std::string_view basis : {"Accrual", "None"}) {
      EXPECT_EQ(company.Answer(report(type, basis)), company.Answer(report(type, ""))) << basis;
    }
  }
  EXPECT_EQ(
      tests::ThrownError([&] { company.Answer(report("ProfitAndLossStandard", "cash")); }).Description(),
      "The request cannot be parsed: \"cash\" is not a valid ReportBasis.");
}

TEST_F(CompanyReportStatus, DoesNotAffectOtherRequests) {
  company.Load("accounts.xml", AccountDocument({{"bank", "Bank", "Bank", "", "", "1.00"}}));
  const auto message = [](std::string_view filter) {
    return Element("GeneralSummaryReportQueryRq",
                   Element("GeneralSummaryReportType", "BalanceSheetStandard") +
                       Element("ReportAccountFilter", Element("AccountTypeFilter", filter)) +
                       Element("SummarizeColumnsBy", "Month"));
  };
  const std::string answer =
      company.Answer(Request("2.0", message("Depreciation") + message("Bank") + "<AccountQueryRq/>"));
  EXPECT_EQ(RowsOf(answer).size(), 7U);
  EXPECT_NE(answer.find("statusCode=\"3210\""), std::string::npos);
  EXPECT_NE(answer.find("<AccountRet>"), std::string::npos);
}

TEST_F(CompanyReportStatus, RepeatsTheRequestId) {
  EXPECT_NE(company
                .Answer(Request("2.0",
                                "<GeneralSummaryReportQueryRq requestID=\"9\"><GeneralSummaryReportType>"
                                "BalanceSheetStandard</GeneralSummaryReportType><ReportAccountFilter>"
                                "<AccountTypeFilter>Bank</AccountTypeFilter></ReportAccountFilter>"
                                "<SummarizeColumnsBy>Month</SummarizeColumnsBy>"
                                "</GeneralSummaryReportQueryRq>"))
                .find("<GeneralSummaryReportQueryRs requestID=\"9\" statusCode=\"0\""),
            std::string::npos);
}

}  // namespace
}  // namespace krnqb::company
