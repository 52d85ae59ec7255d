#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "import/past_performance/fixture.h"

// The company's account types and, with qbXML 1.x, their balances.

namespace krnqb {
namespace {

using tests::CollectingPastPerformance;
using tests::costAccount;
using tests::TypedAccount;
using TypeNames = std::vector<std::string>;

class PastBalances : public CollectingPastPerformance {};

TEST_F(PastBalances, BeginWithFiveTypesFollowedByThoseOfTheAccounts) {
  SetAccounts(TypedAccount("Bank", "Checking", "1") + TypedAccount("Income", "Plants", "1") + costAccount +
              TypedAccount("Bank", "Savings", "1") + TypedAccount("Equity", "Capital", "1"));
  Collect();
  EXPECT_EQ(Types(), (TypeNames{"Income", "Expense", "CostOfGoodSold", "Depreciation", "RetainedEarnings",
                                "Bank", "CostOfGoodsSold", "Equity"}));
  for (const Notice& notice : surroundings.observer.notices) EXPECT_EQ(notice.kind, NoticeKind::Warning);
}

TEST_F(PastBalances, AreTheSameInAllThreeYears) {
  SetAccounts(costAccount + TypedAccount("Bank", "Checking", "100.50") +
              TypedAccount("Bank", "Savings", "-20") + TypedAccount("Equity", "Capital", "7"));
  Collect();
  EXPECT_EQ(Periods("Bank"), First({80.5, 80.5, 80.5}));
  EXPECT_EQ(Periods("Equity"), First({7, 7, 7}));
}

TEST_F(PastBalances, AreZeroInTheLastElevenOfFourteenPeriods) {
  surroundings.state.options.krnProduct = QBKRN_COR;
  SetAccounts(costAccount + TypedAccount("Bank", "Checking", "100"));
  Collect();
  EXPECT_EQ(Periods("Bank"), First({100, 100, 100}));
}

TEST_F(PastBalances, ExcludeSubAccountsAndAccountsWithoutALevel) {
  SetAccounts(costAccount + TypedAccount("Bank", "Checking", "100") +
              TypedAccount("Bank", "Petty cash", "5", "1") + TypedAccount("OtherAsset", "Deep", "5", "2") +
              TypedAccount("FixedAsset", "Blank", "5", " 0") +
              TypedAccount("FixedAsset", "Long", "5", "0.0") +
              "<AccountRet><Name>None</Name><AccountType>CreditCard</AccountType>"
              "<TotalBalance>5</TotalBalance></AccountRet>");
  Collect();
  EXPECT_EQ(Periods("Bank"), First({100, 100, 100}));
  for (const char* type : {"OtherAsset", "FixedAsset", "CreditCard"}) {
    EXPECT_EQ(surroundings.state.pastPerformance->Find(type), nullptr) << type;
  }
}

TEST_F(PastBalances, IncludeANegativeFixedAssetInDepreciation) {
  SetAccounts(costAccount + TypedAccount("FixedAsset", "Truck", "2000") +
              TypedAccount("FixedAsset", "Truck depreciation", "-500") +
              TypedAccount("FixedAsset", "Van", "0") + TypedAccount("Bank", "Overdrawn", "-3"));
  Collect();
  EXPECT_EQ(Periods("FixedAsset"), First({2000, 2000, 2000}));
  EXPECT_EQ(Periods("Depreciation"), First({-500, -500, -500}));
  EXPECT_EQ(Periods("Bank"), First({-3, -3, -3}));
}

TEST_F(PastBalances, ContainFixedAssetsEvenIfAllAreDepreciation) {
  SetAccounts(costAccount + TypedAccount("FixedAsset", "Truck", "-500"));
  Collect();
  EXPECT_EQ(Periods("FixedAsset"), First({}));
  EXPECT_EQ(Periods("Depreciation"), First({-500, -500, -500}));
}

TEST_F(PastBalances, IncludeEquityInRetainedEarningsByTheFirstName) {
  SetAccounts(TypedAccount("Equity", "Retained Earnings", "10") + costAccount +
              TypedAccount("Equity", "Capital", "7"));
  Collect();
  EXPECT_EQ(Periods("RetainedEarnings"), First({17, 17, 17})) << "every equity account";
  EXPECT_EQ(Periods("Equity"), First({}));
}

TEST_F(PastBalances, IncludeEquityInEquityIfAnotherNameComesFirst) {
  for (const std::string first : {"Checking", "retained earnings", "Retained Earnings "}) {
    SetAccounts(TypedAccount("Bank", first, "1") + costAccount +
                TypedAccount("Equity", "Retained Earnings", "10"));
    Collect();
    EXPECT_EQ(Periods("RetainedEarnings"), First({})) << first;
    EXPECT_EQ(Periods("Equity"), First({10, 10, 10})) << first;
  }
}

TEST_F(PastBalances, UseTheFirstNameEvenOfASubAccountOfAnotherType) {
  SetAccounts(TypedAccount("Bank", "Retained Earnings", "1", "1") + costAccount +
              TypedAccount("Equity", "Capital", "10"));
  Collect();
  EXPECT_EQ(Periods("RetainedEarnings"), First({10, 10, 10}));
}

struct BalanceCase {
  const char* text;
  double balance;
};

TEST_F(PastBalances, AreConvertedStrictly) {
  for (const auto& [text, balance] :
       {BalanceCase{"1200.50", 1200.5}, {" $1,200.50 ", 1200.5}, {"(7)", -7}, {"7-", -7}, {"1E2", 100}}) {
    SetAccounts(costAccount + TypedAccount("Bank", "Checking", text));
    Collect();
    EXPECT_EQ(Periods("Bank"), First({balance, balance, balance})) << text;
  }
}

TEST_F(PastBalances, EndAtABalanceThatIsNotANumberAndKeepEarlierFigures) {
  for (const std::string text : {"", "none", "7 net"}) {
    surroundings.journal->Clear();
    surroundings.observer.notices.clear();
    SetAccounts(costAccount + TypedAccount("Bank", "Checking", "100") +
                TypedAccount("CreditCard", "Visa", text) + TypedAccount("Equity", "Capital", "7"));
    Collect();
    EXPECT_EQ(Periods("Bank"), First({100, 100, 100}));
    EXPECT_EQ(Periods("CreditCard"), First({}));
    EXPECT_EQ(surroundings.state.pastPerformance->Find("Equity"), nullptr);
    EXPECT_EQ(surroundings.journal->Text(), "ProcessRequest 60\n") << "no period is read";
    EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::typeMismatch));
  }
  EXPECT_EQ(surroundings.errorPair.number, 0);
}

TEST_F(PastBalances, EndAtAnAccountWithoutABalance) {
  SetAccounts(TypedAccount("Bank", "Checking", "100") +
              "<AccountRet><Name>Visa</Name><Sublevel>0</Sublevel><AccountType>CreditCard</AccountType>"
              "</AccountRet>");
  Collect();
  EXPECT_EQ(Periods("Bank"), First({100, 100, 100}));
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::objectNotSet));
}

TEST_F(PastBalances, AreNotReadWithAnotherVersion) {
  for (const std::int16_t version : {std::int16_t{0}, std::int16_t{2}, std::int16_t{3}}) {
    surroundings.sessionState.qbMajorVersion = version;
    SetAccounts(costAccount + TypedAccount("Bank", "Checking", "100") +
                TypedAccount("Bank", "Savings", "none"));
    Collect();
    EXPECT_EQ(Periods("Bank"), First({})) << version;
    EXPECT_TRUE(surroundings.observer.notices.empty()) << version;
  }
}

TEST_F(PastBalances, AreMissingIfTheAccountRequestIsRefused) {
  surroundings.state.pastPerformance.emplace();
  surroundings.journal->Fail("ProcessRequest 60", Error(-2147220477, "unexpected"));
  Collect();
  EXPECT_FALSE(surroundings.state.pastPerformance);
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, -2147220477));
  EXPECT_EQ(surroundings.errorPair.number, 0);
}

TEST_F(PastBalances, ContainOnlyFiveTypesIfTheAccountListIsMalformed) {
  surroundings.quickBooks->answers["60"] = "no document";
  Collect();
  ASSERT_TRUE(surroundings.state.pastPerformance);
  EXPECT_EQ(Types(), (TypeNames{"Income", "Expense", "CostOfGoodSold", "Depreciation", "RetainedEarnings"}));
  EXPECT_EQ(surroundings.journal->Text(), "ProcessRequest 60\n");
  EXPECT_TRUE(surroundings.observer.Reported(NoticeKind::OperationEnded, error_number::objectNotSet));
}

TEST_F(PastBalances, ReplaceAnEarlierCollection) {
  surroundings.state.pastPerformance.emplace();
  surroundings.state.pastPerformance->Add(cSubtotals("Loan"), "Loan");
  Collect();
  EXPECT_EQ(surroundings.state.pastPerformance->Find("Loan"), nullptr);
}

}  // namespace
}  // namespace krnqb
