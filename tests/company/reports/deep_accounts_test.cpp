#include "company/reports/testing.h"
#include "limited_child.h"
#include "thrown_error.h"

namespace krnqb::company {
namespace {

using testing::AccountDocument;
using testing::AccountFields;
using testing::BalanceSheetRequest;
using testing::ExpenseLine;
using testing::ProfitAndLossRequest;
using testing::RowsOf;
using testing::TransactionDocument;
using testing::TransactionRecord;
using tests::StaysWithinLimits;

class CompanyWithDeepAccounts : public testing::CompanyTest {
 protected:
  // Loads accounts, each the parent of the next, with a balance and a check on each.
  void LoadChain(int depth, const std::string& name) {
    std::vector<std::string> ids;
    for (int level = 0; level < depth; ++level) ids.push_back(std::to_string(level));
    std::vector<AccountFields> accounts;
    for (std::size_t level = 0; level < ids.size(); ++level) {
      accounts.push_back({ids[level], "Expense", name, level == 0 ? "" : std::string_view(ids[level - 1])});
    }
    company.Load("accounts.xml", AccountDocument(accounts));
    std::string checks;
    for (const std::string& id : ids) {
      checks += TransactionRecord("Check", id, "2002-01-05", ExpenseLine(id, "1.00"));
    }
    company.Load("checks.xml", TransactionDocument("Check", checks));
    for (const std::string& id : ids) inputSize += id.size() * 4 + name.size() + 300;
  }

  std::string Expenses() const {
    return company.Answer(ProfitAndLossRequest("OrdinaryExpense", "2002-01-01", "2002-01-31"));
  }

  CompanyFile company = NewCompany("2.0");
  std::size_t inputSize = 0;
};

TEST_F(CompanyWithDeepAccounts, IsReportedWithoutTheStackAndInTime) {
  LoadChain(8'000, "An account of the garden");
  EXPECT_TRUE(StaysWithinLimits(inputSize, [&] {
    const std::string report = Expenses();
    return report.find("<ColData colID=\"2\" value=\"8000.00\" />") != std::string::npos;
  }));
}

TEST_F(CompanyWithDeepAccounts, ShortensOnlyTheNamesOfAncestorsThatExceedAnyRealName) {
  LoadChain(40, "Account of the garden");
  const std::vector<std::string> rows = RowsOf(Expenses());
  const std::string name = "Account of the garden";
  const auto fullName = [&](int depth) {
    std::string text = name;
    for (int level = 1; level < depth; ++level) text += ":" + name;
    return text;
  };
  // Two headings, then one text row per account that has sub-accounts.
  EXPECT_EQ(rows[rows.size() - 4], "SubtotalRow " + name + " | Total " + name + " | 40.00");
  EXPECT_EQ(rows[rows.size() - 6], "SubtotalRow " + fullName(2) + " | Total " + name + " | 39.00");
  EXPECT_EQ(rows[rows.size() - 4 - 2 * 9], "SubtotalRow " + fullName(10) + " | Total " + name + " | 31.00");
  const std::string deepest = rows[2 + 39];
  EXPECT_LT(deepest.size(), 600U);
  EXPECT_NE(deepest.find("...:" + name + " | " + name + " | 1.00"), std::string::npos) << deepest;
  EXPECT_EQ(deepest.find("DataRow " + name + ":" + name), 0U) << deepest;
}

TEST_F(CompanyWithDeepAccounts, IsReportedWithEndlessNamesInTime) {
  const std::string name(300'000, 'x');
  std::vector<std::string> ids;
  for (int index = 0; index < 2'000; ++index) ids.push_back(std::to_string(index));
  std::vector<AccountFields> accounts{{"top", "Expense", name, "", "", "1.00"}};
  for (const std::string& id : ids) accounts.push_back({id, "Expense", "Fuel", "top", "", "1.00"});
  company.Load("accounts.xml", AccountDocument(accounts));
  std::string checks;
  for (const std::string& id : ids) {
    checks += TransactionRecord("Check", id, "2002-01-05", ExpenseLine(id, "1.00"));
  }
  company.Load("checks.xml", TransactionDocument("Check", checks));
  EXPECT_TRUE(StaysWithinLimits(300'000, [&] { return Expenses().size() < 4'000'000; }));
}

TEST_F(CompanyWithDeepAccounts, RefusesAReportOfMoreThanTwentyYears) {
  LoadChain(2, "Fuel");
  const auto answer = [&](std::string_view from, std::string_view to) {
    return company.Answer(ProfitAndLossRequest("OrdinaryExpense", from, to));
  };
  EXPECT_NE(answer("2000-01-01", "2019-12-31").find("statusCode=\"0\""), std::string::npos);
  for (const auto& [from, to] : {std::pair("2000-01-01", "2020-01-01"), std::pair("1000-01-01", "9999-12-31"),
                                 std::pair("1000-01-01", ""), std::pair("", "9999-12-31")}) {
    const std::string refusal = answer(from, to);
    EXPECT_NE(
        refusal.find("statusCode=\"3030\" statusSeverity=\"Error\" statusMessage=\"Invalid date range: a "
                     "report shows at most 240 months.\""),
        std::string::npos)
        << refusal.substr(0, 400);
  }
  EXPECT_TRUE(StaysWithinLimits(1'000, [&] { return answer("1000-01-01", "9999-12-31").size() < 1'000; }));
}

std::string Repeated(std::string_view piece, std::size_t times) {
  std::string text;
  for (std::size_t time = 0; time < times; ++time) text += piece;
  return text;
}

TEST_F(CompanyWithDeepAccounts, RefusesRequestsAndDocumentsThatAreNestedTooDeep) {
  const std::string nested = Repeated("<a>", 100'000) + Repeated("</a>", 100'000);
  const auto failure = [](auto&& action) { return tests::ThrownError(action).Description(); };
  EXPECT_EQ(failure([&] { company.Answer(testing::Request("1.0", nested)); }),
            "The request cannot be parsed: elements are nested more than 1,000 deep.");
  EXPECT_NE(failure([&] {
              company.Load("deep.xml", testing::Response("<AccountQueryRs><AccountRet>\n<ListID>" + nested +
                                                         "</ListID></AccountRet></AccountQueryRs>\n"));
            }).find(": not well-formed: elements are nested more than 1,000 deep"),
            std::string::npos);
}

TEST_F(CompanyWithDeepAccounts, ReadsManyRequestsInTime) {
  for (const std::string_view message :
       {"<AQueryRq><b><c d='1'/></b></AQueryRq>", "<AQueryRq><b>x<c/></b></AQueryRq>"}) {
    const std::string request = testing::Request("1.0", Repeated(message, 30'000));
    EXPECT_TRUE(StaysWithinLimits(
        request.size(), [&] { return tests::ErrorOf([&] { company.Answer(request); }).has_value(); }));
  }
  const std::string request = testing::Request("1.0", Repeated("<AQueryRq><b/></AQueryRq>", 30'000));
  EXPECT_TRUE(StaysWithinLimits(request.size(), [&] { return !company.Answer(request).empty(); }));
}

}  // namespace
}  // namespace krnqb::company
