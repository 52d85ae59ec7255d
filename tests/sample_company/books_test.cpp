#include <cmath>
#include <set>

#include "company/records/item_accounts.h"
#include "company/records/postings.h"
#include "sample_company/generator.h"
#include "sample_company/testing.h"

// The balances of a generated company's accounts.

namespace krnqb::sample_company {
namespace {

using testing::AmountAt;
using testing::FullCompany;
using testing::GeneratedCompany;
using testing::PlainCompany;
using testing::TextAt;

using Amounts = std::map<std::string, std::int64_t>;

bool IsShownAsCredit(const std::string& accountType) {
  static const std::set<std::string> types = {"AccountsPayable",   "CreditCard", "OtherCurrentLiability",
                                              "LongTermLiability", "Equity",     "Income"};
  return types.contains(accountType);
}

/// The accounts and the postings of all transactions, summed from the records.
class Books {
 public:
  explicit Books(const GeneratedCompany& company) : accounts(company.Accounts()) {
    company::ElementTree tree;
    for (const XmlElement& item : company.Items()) {
      const std::string xml = item.Xml();
      itemAccounts_[TextAt(item, "ListID")] = company::ReadItemAccounts(tree.Read(xml));
    }
    for (const XmlElement& transaction : company.Transactions()) {
      const std::string year = TextAt(transaction, "TxnDate").substr(0, 4);
      const std::string xml = transaction.Xml();
      for (const company::Posting& posting : company::ReadPostings(tree.Read(xml))) Post(posting, year);
    }
  }

  /// Returns an account's balance, debits positive.
  static std::int64_t Balance(const XmlElement& account) {
    const std::int64_t balance = AmountAt(account, "Balance");
    return IsShownAsCredit(TextAt(account, "AccountType")) ? -balance : balance;
  }
  /// Returns an account's balance before the first transaction.
  std::int64_t Opening(const XmlElement& account) {
    return Balance(account) - posted[TextAt(account, "ListID")];
  }

  std::vector<XmlElement> accounts;
  Amounts posted;                                        // by account
  std::map<std::string, std::set<std::string>> yearsOf;  // by account

 private:
  void Post(const company::Posting& posting, const std::string& year) {
    if (posting.target == company::PostingTarget::Account) return Post(posting.key, posting.amount, year);
    for (const company::ItemAccount& account : itemAccounts_[posting.key]) {
      if (account.target != posting.target) continue;
      const auto cost = std::llround(account.unitCost.value_or(0) * posting.quantity);
      Post(account.account, account.unitCost ? cost : posting.amount, year);
    }
  }
  void Post(const std::string& account, std::int64_t amount, const std::string& year) {
    posted[account] += amount;
    yearsOf[account].insert(year);
  }

  std::map<std::string, std::vector<company::ItemAccount>> itemAccounts_;
};

std::set<std::string> ParentsOf(const std::vector<XmlElement>& accounts) {
  std::set<std::string> parents;
  for (const XmlElement& account : accounts) parents.insert(TextAt(account, "ParentRef/ListID"));
  return parents;
}

TEST(GeneratedBooks, ExplainProfitAndLossBalancesByPostings) {
  Books books{GeneratedCompany(FullCompany())};
  for (const XmlElement& account : books.accounts) {
    const std::string type = TextAt(account, "AccountType");
    const std::string name = TextAt(account, "FullName");
    const bool isProfitAndLoss = type == "Income" || type == "CostOfGoodsSold" || type == "Expense";
    if (!isProfitAndLoss || name == "Depreciation Expense") continue;
    EXPECT_EQ(books.Opening(account), 0) << name;
  }
}

TEST(GeneratedBooks, ExplainReceivablesPayablesAndStockByOpenItems) {
  const GeneratedCompany company(FullCompany());
  const auto balanceOf = [&](std::string_view name) {
    return AmountAt(XmlElement::Parse(company.Answer(request_number::allAccounts)),
                    "//AccountRet[Name = \"" + std::string(name) + "\"]/Balance");
  };
  std::int64_t receivable = 0;
  for (const XmlElement& invoice : company.Records(request_number::invoices)) {
    receivable += AmountAt(invoice, "BalanceRemaining");
    EXPECT_EQ(TextAt(invoice, "IsPaid") == "true", AmountAt(invoice, "BalanceRemaining") == 0);
  }
  std::int64_t payable = 0;
  for (const XmlElement& bill : company.Records(request_number::bills))
    payable += AmountAt(bill, "OpenAmount");
  std::int64_t stock = 0;
  for (const XmlElement& item : company.Records(request_number::items)) {
    if (item.Name() != "ItemInventoryRet") continue;
    const std::int64_t pieces = std::stoll(TextAt(item, "QuantityOnHand"));
    EXPECT_GE(pieces, 0);
    stock += pieces * AmountAt(item, "AverageCost");
  }
  EXPECT_GT(receivable, 0);
  EXPECT_GT(payable, 0);
  EXPECT_GT(stock, 0);
  EXPECT_EQ(balanceOf("Accounts Receivable"), receivable);
  EXPECT_EQ(balanceOf("Accounts Payable"), payable);
  EXPECT_EQ(balanceOf("Inventory Asset"), stock);
}

TEST(GeneratedBooks, SumToZero) {
  for (const GeneratorSettings& settings : {FullCompany(), PlainCompany()}) {
    Books books{GeneratedCompany(settings)};
    std::int64_t sum = 0;
    std::int64_t openings = 0;
    for (const XmlElement& account : books.accounts) {
      sum += Books::Balance(account);
      openings += books.Opening(account);
    }
    EXPECT_EQ(sum, 0);
    // Invoiced expenses are due from customers but have no other posting.
    EXPECT_EQ(openings == 0, !settings.features.billableExpenses);
  }
}

TEST(GeneratedBooks, IncludeSubAccountsInTotals) {
  const Books books{GeneratedCompany(FullCompany())};
  Amounts totals;
  for (const XmlElement& account : books.accounts)
    totals[TextAt(account, "ListID")] += AmountAt(account, "Balance");
  // Children follow their parents in the answer.
  for (auto account = books.accounts.rbegin(); account != books.accounts.rend(); ++account) {
    const std::string parent = TextAt(*account, "ParentRef/ListID");
    if (!parent.empty()) totals[parent] += totals[TextAt(*account, "ListID")];
  }
  for (const XmlElement& account : books.accounts) {
    EXPECT_EQ(AmountAt(account, "TotalBalance"), totals[TextAt(account, "ListID")])
        << TextAt(account, "FullName");
  }
}

TEST(GeneratedBooks, MakeAProfitAndHaveMoneyInTheBank) {
  const Books books{GeneratedCompany(FullCompany())};
  std::int64_t profit = 0;
  for (const XmlElement& account : books.accounts) {
    const std::string type = TextAt(account, "AccountType");
    if (type == "Income" || type == "CostOfGoodsSold" || type == "Expense") profit -= Books::Balance(account);
    if (TextAt(account, "FullName") == "Checking") {
      EXPECT_GT(Books::Balance(account), 0);
    }
  }
  EXPECT_GT(profit, 0);
}

TEST(GeneratedBooks, PostToAccountsOfEveryType) {
  const Books books{GeneratedCompany(FullCompany())};
  std::set<std::string> postedTypes;
  for (const XmlElement& account : books.accounts) {
    if (books.posted.contains(TextAt(account, "ListID"))) postedTypes.insert(TextAt(account, "AccountType"));
  }
  EXPECT_EQ(postedTypes.size(), 13U);
}

TEST(GeneratedBooks, PostToEveryLoneExpenseAccountInEveryYear) {
  for (const std::uint64_t seed : {1U, 2U, 3U}) {
    GeneratorSettings settings = PlainCompany();
    settings.seed = seed;
    settings.transactions = 300;
    const Books books{GeneratedCompany(settings)};
    for (const XmlElement& account : books.accounts) {
      if (TextAt(account, "AccountType") != "Expense" || AmountAt(account, "Balance") == 0) continue;
      if (TextAt(account, "Sublevel") != "0") continue;
      EXPECT_EQ(books.yearsOf.at(TextAt(account, "ListID")).size(), 2U) << TextAt(account, "FullName");
    }
  }
}

TEST(GeneratedBooks, PostToParentsOnlyOnRequest) {
  const auto postedParents = [](const GeneratorSettings& settings) {
    const Books books{GeneratedCompany(settings)};
    std::size_t count = 0;
    for (const std::string& parent : ParentsOf(books.accounts)) count += books.posted.count(parent);
    return count;
  };
  EXPECT_GT(postedParents(FullCompany()), 5U);
  EXPECT_EQ(postedParents(PlainCompany()), 0U);
}

TEST(GeneratedBooks, OmitFeaturesThatAreOff) {
  const GeneratedCompany full(FullCompany());
  const GeneratedCompany plain(PlainCompany());
  const auto count = [](const GeneratedCompany& company, const std::string& path) {
    std::size_t found = 0;
    for (const XmlElement& transaction : company.Transactions()) found += transaction.SelectAll(path).size();
    return found;
  };
  for (const char* const path : {"*/CustomerRef", ".//ItemLineRet/BillableStatus", "ItemGroupLineRet",
                                 "*[RatePercent]", "*/ItemGroupRef[FullName = 'Reimb Group']"}) {
    EXPECT_GT(count(full, path), 0U) << path;
    EXPECT_EQ(count(plain, path), 0U) << path;
  }
  const auto has = [](const std::string& answer, std::string_view text) {
    return answer.find(text) != std::string::npos;
  };
  EXPECT_TRUE(has(full.Answer(request_number::items), "<ItemInventoryRet>"));
  EXPECT_FALSE(has(plain.Answer(request_number::items), "<ItemInventoryRet>"));
  EXPECT_FALSE(has(full.Answer(request_number::allAccounts), "<AccountNumber>"));
  const std::string depreciation = "//AccountRet[Name = 'Depreciation Expense']/Balance";
  EXPECT_GT(AmountAt(XmlElement::Parse(full.Answer(request_number::allAccounts)), depreciation), 0);
  EXPECT_EQ(AmountAt(XmlElement::Parse(plain.Answer(request_number::allAccounts)), depreciation), 0);
}

TEST(GeneratedBooks, NumberAccountsOnRequest) {
  GeneratorSettings settings = PlainCompany();
  settings.features.accountNumbers = true;
  const GeneratedCompany company(settings);
  std::set<std::string> numbers;
  for (const XmlElement& account : company.Accounts()) numbers.insert(TextAt(account, "AccountNumber"));
  EXPECT_EQ(numbers.size(), 150U);
  EXPECT_NE(company.Answer(request_number::preferences).find("<IsUsingAccountNumbers>true<"),
            std::string::npos);
}

}  // namespace
}  // namespace krnqb::sample_company
