#include <gtest/gtest.h>

#include "fakes/amounts_host.h"
#include "fakes/findings.h"
#include "fakes/test_host.h"

// What whole imports warn of, and what they do not.

namespace krnqb {
namespace {

using fakes::Account;
using fakes::AccountAnswer;
using fakes::AccountRef;
using fakes::Amount;
using fakes::AmountsHost;
using fakes::Element;
using fakes::TestHost;
using Findings = std::vector<Finding>;

const std::string januaryBill = fakes::RecordAnswer(
    "BillQueryRs", Element("BillRet", fakes::ExpenseLine(AccountRef("E-1") + Amount("10.00"))));

TEST(ImportWarning, NamesAProcessorOfAnotherVersionAndIsIncomplete) {
  for (const std::int16_t version : std::vector<std::int16_t>{0, 3, 16}) {
    AmountsHost host;
    host.quickBooks->majorVersion = version;
    host.IncludeAccounts();
    host.component.Go();
    EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::UnsupportedProcessor),
              (Findings{{.code = WarningCode::UnsupportedProcessor, .name = std::to_string(version)}}));
    EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::EmptyPeriod), Findings());
    const auto isIncomplete = [](const Notice& notice) {
      return notice.kind == NoticeKind::Warning && notice.meaning == NoticeMeaning::Incomplete;
    };
    EXPECT_TRUE(std::any_of(host.observer->notices.begin(), host.observer->notices.end(), isIncomplete));
  }
}

TEST(ImportWarning, DoesNotNameAnyVersionForAccountsAlone) {
  AmountsHost host;
  host.quickBooks->majorVersion = 16;
  host.IncludeAccounts();
  host.component.BalancesImport(BalImport_None);
  host.component.Go();
  EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::UnsupportedProcessor), Findings());
}

TEST(ImportWarning, NamesAPeriodWithoutTransactions) {
  AmountsHost host;
  host.IncludeAccounts();
  host.component.Go();
  EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::EmptyPeriod),
            (Findings{{.code = WarningCode::EmptyPeriod, .text = "2002-01"}}));
}

TEST(ImportWarning, DoesNotNameAPeriodWithOneTransaction) {
  AmountsHost host;
  host.IncludeAccounts();
  host.quickBooks->answers["10 2002-12-01"] = januaryBill;
  host.component.Go();
  EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::EmptyPeriod), Findings());
}

TEST(ImportWarning, NamesAPeriodWhoseReportsHaveNoAmount) {
  AmountsHost host;
  host.quickBooks->majorVersion = 2;
  host.IncludeAccounts();
  for (const char* report : {"300", "310", "320"}) {
    host.quickBooks->answers[report] = fakes::ReportAnswer(fakes::ReportRow("Rent", {"0.00"}));
  }
  host.component.Go();
  EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::EmptyPeriod).size(), 1U);
  host.observer->notices.clear();
  host.quickBooks->answers["310"] = fakes::ReportAnswer(fakes::ReportRow("Rent", {"0.00", "7"}));
  host.component.Go();
  EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::EmptyPeriod), Findings());
}

TEST(ImportWarning, DoesNotNameAPeriodIfAnyReportHasAnAmount) {
  for (const char* report : {"300", "310", "320"}) {
    AmountsHost host;
    host.quickBooks->majorVersion = 2;
    host.IncludeAccounts();
    host.quickBooks->answers[report] = fakes::ReportAnswer(fakes::ReportRow("Rent", {"7"}));
    host.component.Go();
    EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::EmptyPeriod), Findings()) << report;
    EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::UnsupportedProcessor), Findings()) << report;
  }
}

TEST(ImportWarning, NamesAccountsThatDifferOnlyInCase) {
  TestHost host;
  host.quickBooks->answers["4"] = AccountAnswer(
      "4", {Account("E-1", "Rent"), Account("E-2", "RENT"), fakes::SubAccount("E-3", "rent", "E-1")});
  host.component.IncludeExpenseAccounts(true);
  host.component.Go();
  EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::NamesDifferInCase),
            (Findings{{.code = WarningCode::NamesDifferInCase, .name = "Rent", .other = "RENT"}}));
}

TEST(ImportWarning, DoesNotNameAccountsOfTwoListsThatDifferInCase) {
  TestHost host;
  host.quickBooks->answers["4"] = AccountAnswer("4", {Account("E-1", "plants")});
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludeIncomeAccounts(true);
  host.component.Go();
  EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::NamesDifferInCase), Findings());
}

TEST(ImportWarning, NamesAnAccountThatCannotBeSelected) {
  struct Case {
    const char* id;
    const char* name;
    const char* reported;
  };
  for (const Case& each :
       {Case{"E-1", "3\" pots", "3\" pots"}, Case{"E-1", "a]]&gt;b", "a]]>b"},
        Case{"E-&quot;", "Rent", "Rent"}, Case{"E-&lt;", "Rent", "Rent"}, Case{"E-&amp;", "", "E-&"}}) {
    TestHost host;
    host.component.KRNProduct(QBKRN_BRI);
    host.quickBooks->answers["4"] = AccountAnswer("4", {Account(each.id, each.name), Account("E-2", "Gas")});
    host.component.SelectedExpenses();
    EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::NameWithQuote),
              (Findings{{.code = WarningCode::NameWithQuote, .name = each.reported}}))
        << each.id << ' ' << each.name;
  }
}

TEST(ImportWarning, DoesNotNameAnAccountThatCanBeSelected) {
  TestHost host;
  host.component.KRNProduct(QBKRN_BRI);
  host.quickBooks->answers["4"] = AccountAnswer(
      "4", {Account("E-1", "Meals &amp; 'fun' &lt;x&gt;"), fakes::SubAccount("E-3", "3\" pots", "E-1")});
  EXPECT_TRUE(host.component.SelectedExpenses());
  EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::NameWithQuote), Findings());
}

TEST(ImportWarning, NamesTheTableOfAPairThatCouldNotBeChanged) {
  TestHost host;
  host.planContent->tables[fakes::TableId("21", "0600")] = "<tableitem/>";
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludeIncomeAccounts(true);
  host.component.Go();
  EXPECT_EQ(
      fakes::FindingsOf(*host.observer, WarningCode::HalfLoadedTwins),
      (Findings{
          {.code = WarningCode::HalfLoadedTwins, .name = "planned expenses", .other = "actual expenses"}}));
}

TEST(ImportWarning, DoesNotNameAPairOfWhichNeitherTableCouldBeChanged) {
  TestHost host;
  host.planContent->tables[fakes::TableId("20", "0600")] = "<tableitem/>";
  host.planContent->tables[fakes::TableId("21", "0600")] = "<tableitem/>";
  host.component.IncludeExpenseAccounts(true);
  host.component.Go();
  EXPECT_EQ(fakes::FindingsOf(*host.observer, WarningCode::HalfLoadedTwins), Findings());
}

}  // namespace
}  // namespace krnqb
