#include "fakes/findings.h"
#include "import/past_performance/fixture.h"

// What is warned of while past performance is collected, and what is not.

namespace krnqb {
namespace {

using tests::costAccount;
using tests::TypedAccount;
using Findings = std::vector<Finding>;

class PastWarnings : public tests::CollectingPastPerformance {
 protected:
  Findings Collected(WarningCode code) {
    Collect();
    return fakes::FindingsOf(surroundings.observer, code);
  }
  void AnswerWithReports() {
    surroundings.sessionState.qbMajorVersion = 2;
    for (const char* report : {"300", "310", "320", "330"})
      surroundings.quickBooks->answers[report] = fakes::ReportAnswer("");
  }
};

TEST_F(PastWarnings, NameTheEquityThatBecomesRetainedEarnings) {
  SetAccounts(TypedAccount("Equity", "Retained Earnings", "10") + costAccount +
              TypedAccount("Equity", "Owner", "7"));
  EXPECT_EQ(Collected(WarningCode::EquityNamedFirst),
            (Findings{{.code = WarningCode::EquityNamedFirst, .name = "Retained Earnings", .amount = 10},
                      {.code = WarningCode::EquityNamedFirst, .name = "Owner", .amount = 7}}));
}

TEST_F(PastWarnings, DoNotNameEquityIfAnotherNameComesFirst) {
  SetAccounts(costAccount + TypedAccount("Equity", "Retained Earnings", "10"));
  EXPECT_EQ(Collected(WarningCode::EquityNamedFirst), Findings());
}

TEST_F(PastWarnings, SayThatTransactionsShowTodaysBalances) {
  const Findings years = Collected(WarningCode::PastFromToday);
  ASSERT_EQ(years.size(), 1U);
  EXPECT_NE(years[0].name.find("each of its three years"), std::string::npos);
}

TEST_F(PastWarnings, SayWhichMonthsAreEmpty) {
  surroundings.state.options.krnProduct = QBKRN_COR;
  const Findings months = Collected(WarningCode::PastFromToday);
  ASSERT_EQ(months.size(), 1U);
  EXPECT_NE(months[0].name.find("0 in the other months"), std::string::npos);
}

TEST_F(PastWarnings, DoNotSayThatReportsShowTodaysBalances) {
  AnswerWithReports();
  EXPECT_EQ(Collected(WarningCode::PastFromToday), Findings());
}

TEST_F(PastWarnings, DoNotNameWhatOnlyConcernsExpensesThatAreNotWritten) {
  surroundings.state.expenseAccounts = fakes::ImportSurroundings::List(
      "4", {fakes::Element("AccountRet", fakes::Element("ListID", "E-1") + fakes::Element("Name", "Rent") +
                                             fakes::Element("Sublevel", "0") +
                                             fakes::Element("AccountType", "Expense") +
                                             fakes::Element("Balance", "1,000"))});
  EXPECT_EQ(Collected(WarningCode::BalanceSpread), Findings());
  EXPECT_EQ(fakes::FindingsOf(surroundings.observer, WarningCode::TextCut), Findings());
}

TEST_F(PastWarnings, NameATotalColumnOfAPastMonth) {
  AnswerWithReports();
  surroundings.state.options.krnProduct = QBKRN_COR;
  surroundings.quickBooks->answers["300"] = fakes::ReportAnswer(fakes::ReportRow("Plants", {"100", "100"}));
  const Findings found = Collected(WarningCode::TotalColumn);
  ASSERT_EQ(found.size(), 12U) << "the years have a column for each month";
  EXPECT_EQ(found[0].name, "sales");
  EXPECT_EQ(found[0].amount, 100);
}

TEST_F(PastWarnings, NameAPastAmountThatWasReadInPart) {
  AnswerWithReports();
  surroundings.quickBooks->answers["300"] = fakes::ReportAnswer(fakes::ReportRow("Plants", {"1,234"}));
  EXPECT_EQ(Collected(WarningCode::TextCut),
            (Findings{{.code = WarningCode::TextCut, .name = "Plants", .text = "1,234", .amount = 1}}));
}

}  // namespace
}  // namespace krnqb
