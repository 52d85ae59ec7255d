#include "company/reports/profit_and_loss.h"

#include "company/reports/testing.h"

namespace krnqb::company {
namespace {

using testing::AccountDocument;
using testing::ExpenseLine;
using testing::TransactionDocument;
using testing::TransactionRecord;

using Texts = std::vector<std::string>;

class CompanyBooks : public testing::CompanyTest {
 protected:
  CompanyBooks() {
    company.Load("accounts.xml", AccountDocument({{"bank", "Bank", "Bank"},
                                                  {"ads", "Expense", "Ads"},
                                                  {"auto", "Expense", "Auto", "", "", "2.00"},
                                                  {"fuel", "Expense", "Fuel", "auto", "", "9.00"},
                                                  {"diesel", "Expense", "Diesel", "fuel", "", "-1.00"},
                                                  {"wash", "Expense", "Wash", "auto"},
                                                  {"fees", "OtherExpense", "Fees", "", "", "0.00"},
                                                  {"sales", "Income", "Sales", "", "", "7.00"},
                                                  {"interest", "OtherIncome", "Interest", "bank"},
                                                  {"cost", "CostOfGoodsSold", "Cost"}}));
    Spend("2002-01-31", "fuel", "4.00");
    Spend("2002-02-01", "diesel", "-1.00");
    Spend("2002-03-01", "auto", "2.00");
    Spend("2002-02-15", "wash", "8.00");
    Spend("2002-02-15", "sales", "1.50");
    Spend("2001-02-15", "fuel", "5.00");
  }

  void Spend(std::string_view date, std::string_view account, std::string_view amount) {
    company.Load("check.xml",
                 TransactionDocument("Check", TransactionRecord("Check", std::to_string(++checks), date,
                                                                ExpenseLine(account, amount))));
  }

  CompanyFile company = NewCompany("1.0");
  int checks = 0;
};

TEST_F(CompanyBooks, AddUpAccountsAndSubAccountsByMonth) {
  Texts rows;
  const ProfitAndLoss books = company.ProfitAndLoss("2002-01-01", "2002-02-28");
  for (const ProfitAndLossAccount& account : books.accounts) {
    rows.push_back(fmt::format("{} {} {} {} in {}: {}, {}", account.type, account.level, account.id,
                               account.fullName, books.accounts[account.topLevel].id,
                               fmt::join(account.own, " "), fmt::join(account.withSubAccounts, " ")));
  }
  EXPECT_EQ(rows, (Texts{"Income 0 sales Sales in sales: 0 -150, 0 -150",
                         "CostOfGoodsSold 0 cost Cost in cost: 0 0, 0 0",
                         "Expense 0 ads Ads in ads: 0 0, 0 0", "Expense 0 auto Auto in auto: 0 0, 400 700",
                         "Expense 1 fuel Auto:Fuel in auto: 400 0, 400 -100",
                         "Expense 2 diesel Auto:Fuel:Diesel in auto: 0 -100, 0 -100",
                         "Expense 1 wash Auto:Wash in auto: 0 800, 0 800",
                         "OtherIncome 0 interest Interest in interest: 0 0, 0 0",
                         "OtherExpense 0 fees Fees in fees: 0 0, 0 0"}));
  EXPECT_EQ(books.SumOf("Expense"), (RowAmounts{400, 700}));
  EXPECT_EQ(books.SumOf("Income"), (RowAmounts{0, -150}));
  EXPECT_EQ(books.SumOf("Bank"), (RowAmounts{0, 0}));
}

TEST_F(CompanyBooks, SayWhatTheTransactionsOfAllDaysExplain) {
  Texts rows;
  for (const ProfitAndLossAccount& account : company.ProfitAndLoss("2002-02-01", "2002-01-31").accounts) {
    EXPECT_TRUE(account.own.empty());
    const auto text = [](std::optional<std::int64_t> amount) {
      return amount ? std::to_string(*amount) : "none";
    };
    rows.push_back(fmt::format("{} {} of {}: {}", account.id, account.posted, text(account.balance),
                               text(account.Unexplained())));
  }
  EXPECT_EQ(rows, (Texts{"sales -150 of 700: 850", "cost 0 of none: none", "ads 0 of none: none",
                         "auto 200 of 200: 0", "fuel 900 of 900: 0", "diesel -100 of -100: 0",
                         "wash 800 of none: none", "interest 0 of none: none", "fees 0 of 0: 0"}));
}

}  // namespace
}  // namespace krnqb::company
