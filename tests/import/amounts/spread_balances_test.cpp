#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/import_surroundings.h"
#include "import/amounts/balances.h"

namespace krnqb {
namespace {

using fakes::Element;
using Months = std::vector<double>;

class SpreadingBalances : public testing::Test {
 protected:
  static std::string Record(const std::string& name, const std::string& balance,
                            const std::string& sublevel = "0", const std::string& type = "Expense") {
    return Element("AccountRet", Element("ListID", name) + Element("Name", name) +
                                     Element("Sublevel", sublevel) + Element("AccountType", type) +
                                     Element("Balance", balance));
  }
  void Spread(const std::string& records) {
    surroundings.state.expenseAccounts = fakes::ImportSurroundings::List("4", {records});
    SpreadExpenseBalances(surroundings.context);
  }
  void Book(const std::string& name, std::int16_t month, double amount) {
    surroundings.state.expenseSubtotals->At(name).SubTotal(month, amount);
  }
  Months Of(const std::string& name) const {
    Months months;
    for (std::int16_t month = 1; month <= 12; ++month) months.push_back(surroundings.Expense(name, month));
    return months;
  }

  fakes::ImportSurroundings surroundings;
};

TEST_F(SpreadingBalances, CoversTwelveMonthsWithoutActivity) {
  Spread(Record("Rent", "1200.00"));
  EXPECT_EQ(Of("Rent"), Months(12, 100));
}

TEST_F(SpreadingBalances, CoversTheMonthsOfActivity) {
  Book("Utilities", 6, -1);
  Spread(Record("Rent", "1200.00"));
  EXPECT_EQ(Of("Rent"), (Months{200, 200, 200, 200, 200, 200, 0, 0, 0, 0, 0, 0}));
}

TEST_F(SpreadingBalances, IsEvenWithoutRounding) {
  Spread(Record("Rent", "100") + Record("Utilities", "-100"));
  EXPECT_EQ(Of("Rent"), Months(12, 100.0 / 12));
  EXPECT_EQ(Of("Utilities"), Months(12, -100.0 / 12));
}

TEST_F(SpreadingBalances, KeepsTheAmountsOfAnAccount) {
  Book("Rent", 2, 50);
  Spread(Record("Rent", "1200.00"));
  EXPECT_EQ(Of("Rent"), (Months{0, 50, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(SpreadingBalances, ReplacesAmountsThatCancelOut) {
  Book("Rent", 1, 50);
  Book("Rent", 3, -50);
  Spread(Record("Rent", "300"));
  EXPECT_EQ(Of("Rent"), (Months{100, 100, 100, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(SpreadingBalances, IncludesTheLastTwoSlotsInTheTotal) {
  Book("Rent", 13, 1);
  Spread(Record("Rent", "1200.00"));
  EXPECT_EQ(Of("Rent"), Months(12, 0));
}

TEST_F(SpreadingBalances, IncludesOnlyTopLevelAccounts) {
  Spread(Record("Rent", "1200.00", "1") + Record("Utilities", "1200.00", "2"));
  EXPECT_EQ(surroundings.SumOfAll(), 0);
}

TEST_F(SpreadingBalances, ComparesTheLevelAsANumber) {
  Spread(Record("Rent", "1200.00", "0.0") + Record("Utilities", "1200.00", " 0 "));
  EXPECT_EQ(Of("Rent"), Months(12, 100));
  EXPECT_EQ(Of("Utilities"), Months(12, 100));
}

TEST_F(SpreadingBalances, SkipsALevelThatIsNotANumber) {
  Spread(Record("Rent", "1200.00", "") + Record("Utilities", "1200.00", "none"));
  EXPECT_EQ(surroundings.SumOfAll(), 0);
}

TEST_F(SpreadingBalances, IncludesOnlyExpenseAccounts) {
  Spread(Record("Rent", "1200.00", "0", "Income") + Record("Utilities", "1200.00", "0", "expense"));
  EXPECT_EQ(surroundings.SumOfAll(), 0);
}

TEST_F(SpreadingBalances, SkipsAnAccountWithoutBalanceNameOrSubtotal) {
  Spread(
      "<AccountRet><Name>Rent</Name><Sublevel>0</Sublevel><AccountType>Expense</AccountType></AccountRet>"
      "<AccountRet><Sublevel>0</Sublevel><AccountType>Expense</AccountType><Balance>1</Balance></"
      "AccountRet>" +
      Record("Wages", "1200.00") + Record("Utilities", "12"));
  EXPECT_EQ(Of("Utilities"), Months(12, 1));
  EXPECT_EQ(surroundings.SumOfAll(), 12);
}

struct BalanceCase {
  const char* text;
  double month;
};

TEST_F(SpreadingBalances, ReadsTheLeadingNumberOfABalance) {
  for (const auto& [text, month] : {BalanceCase{"1200.00", 100},
                                    {" 1200 in all", 100},
                                    {"12,000", 1},
                                    {"-1200", -100},
                                    {"1.2E3", 100},
                                    {"0.00", 0},
                                    {"", 0},
                                    {"$1200", 0}}) {
    surroundings.state.expenseSubtotals = fakes::ImportSurroundings::Zeros({"Rent"});
    Spread(Record("Rent", text));
    EXPECT_EQ(Of("Rent"), Months(12, month)) << text;
  }
}

TEST_F(SpreadingBalances, FindsTheSubtotalCaseInsensitively) {
  Spread(Record("RENT", "1200.00"));
  EXPECT_EQ(Of("Rent"), Months(12, 100));
}

TEST_F(SpreadingBalances, DoesNothingWithoutAListOrSubtotals) {
  surroundings.state.expenseAccounts = AccountList();
  SpreadExpenseBalances(surroundings.context);
  EXPECT_EQ(surroundings.SumOfAll(), 0);
  surroundings.state.expenseSubtotals.reset();
  Spread(Record("Rent", "1200.00"));
  EXPECT_FALSE(surroundings.state.expenseSubtotals);
  EXPECT_EQ(surroundings.errorPair.number, 0);
}

}  // namespace
}  // namespace krnqb
