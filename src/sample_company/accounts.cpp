#include "sample_company/accounts.h"

#include <fmt/format.h>

#include <algorithm>

#include "company/records/kinds.h"
#include "sample_company/generator.h"

namespace krnqb::sample_company {
namespace {

struct CommonAccount {
  std::string_view name;
  std::string_view type;
  std::string_view parent;  ///< the name of the parent; empty at the top level
  AccountRole role = AccountRole::None;
};

using enum AccountRole;

constexpr std::array commonAccounts = {
    CommonAccount{"Checking", "Bank", "", Checking},
    CommonAccount{"Savings", "Bank", "", Savings},
    CommonAccount{"Accounts Receivable", "AccountsReceivable", "", Receivable},
    CommonAccount{"Inventory Asset", "OtherCurrentAsset", "", Inventory},
    CommonAccount{"Prepaid Insurance", "OtherCurrentAsset", ""},
    CommonAccount{"Equipment", "FixedAsset", ""},
    CommonAccount{"Machinery", "FixedAsset", "Equipment", Machinery},
    CommonAccount{"Accumulated Depreciation", "FixedAsset", "", AccumulatedDepreciation},
    CommonAccount{"Security Deposits", "OtherAsset", ""},
    CommonAccount{"Accounts Payable", "AccountsPayable", "", Payable},
    CommonAccount{"Company Card", "CreditCard", "", Card},
    CommonAccount{"Payroll Liabilities", "OtherCurrentLiability", "", PayrollLiabilities},
    CommonAccount{"Equipment Loan", "LongTermLiability", "", Loan},
    CommonAccount{"Opening Bal Equity", "Equity", "", OpeningEquity},
    CommonAccount{"Owner's Equity", "Equity", ""},
    CommonAccount{"Owner's Draw", "Equity", "Owner's Equity", Draw},
    CommonAccount{"Retained Earnings", "Equity", "", RetainedEarnings},
    CommonAccount{"Product Sales", "Income", ""},
    CommonAccount{"Store", "Income", "Product Sales"},
    CommonAccount{"Counter", "Income", "Store"},
    CommonAccount{"Wholesale", "Income", "Product Sales"},
    CommonAccount{"Service Revenue", "Income", ""},
    CommonAccount{"Sales Discounts", "Income", "", Discounts},
    CommonAccount{"Cost of Goods Sold", "CostOfGoodsSold", ""},
    CommonAccount{"Goods", "CostOfGoodsSold", "Cost of Goods Sold"},
    CommonAccount{"Advertising", "Expense", ""},
    CommonAccount{"Depreciation Expense", "Expense", "", Depreciation},
    CommonAccount{"Facilities", "Expense", ""},
    CommonAccount{"Rent", "Expense", "Facilities", Rent},
    CommonAccount{"Utilities", "Expense", "Facilities"},
    CommonAccount{"Electricity", "Expense", "Utilities"},
    CommonAccount{"Water", "Expense", "Utilities"},
    CommonAccount{"Financing", "Expense", ""},
    CommonAccount{"Loan Interest", "Expense", "Financing", Interest},
    CommonAccount{"Insurance", "Expense", ""},
    CommonAccount{"Job Expenses", "Expense", ""},
    CommonAccount{"Materials", "Expense", "Job Expenses"},
    CommonAccount{"Permits", "Expense", "Job Expenses", Permits},
    CommonAccount{"Subcontractors", "Expense", "Job Expenses"},
    CommonAccount{"Office Supplies", "Expense", ""},
    CommonAccount{"Payroll Expenses", "Expense", ""},
    CommonAccount{"Wages", "Expense", "Payroll Expenses", Wages},
    CommonAccount{"Payroll Taxes", "Expense", "Payroll Expenses", PayrollTaxes},
};
static_assert(commonAccounts.size() == static_cast<std::size_t>(GeneratorBounds::leastAccounts));

// The share of each type in 100 additional accounts.
struct TypeShare {
  std::string_view type;
  unsigned percent;
};
constexpr std::array typeShares = {TypeShare{"Expense", 48},
                                   TypeShare{"Income", 17},
                                   TypeShare{"CostOfGoodsSold", 6},
                                   TypeShare{"Bank", 3},
                                   TypeShare{"FixedAsset", 6},
                                   TypeShare{"OtherCurrentAsset", 5},
                                   TypeShare{"OtherAsset", 3},
                                   TypeShare{"CreditCard", 3},
                                   TypeShare{"OtherCurrentLiability", 4},
                                   TypeShare{"LongTermLiability", 3},
                                   TypeShare{"Equity", 2}};

constexpr int deepestParent = 1;
constexpr unsigned percentBelowAnother = 60;

std::string_view PickType(Random& random) {
  std::uint64_t place = random.Below(100);
  for (const TypeShare& share : typeShares) {
    if (place < share.percent) return share.type;
    place -= share.percent;
  }
  return "Expense";
}

std::size_t TypeOrder(std::string_view type) {
  return company::AccountTypeOrder(type).value_or(0);
}

}  // namespace

ChartOfAccounts::ChartOfAccounts(std::int64_t count, std::int64_t begun, Random& random)
    : possibleParents_(accountsOfType_.size()), begun_(begun) {
  accounts_.reserve(static_cast<std::size_t>(count));
  for (const CommonAccount& common : commonAccounts) {
    if (common.parent.empty()) {
      Add(common.type, common.name, common.role, random);
    } else {
      AddBelow(Find(common.parent), common.name, common.role, random);
    }
  }
  while (accounts_.size() < static_cast<std::size_t>(count)) AddAnother(random);
}

std::size_t ChartOfAccounts::Find(std::string_view name) const {
  return static_cast<std::size_t>(std::ranges::find(accounts_, name, &Account::name) - accounts_.begin());
}

void ChartOfAccounts::AddAnother(Random& random) {
  const std::string_view type = PickType(random);
  const std::vector<std::size_t>& parents = possibleParents_[TypeOrder(type)];
  if (!parents.empty() && random.Chance(percentBelowAnother)) {
    const std::size_t parent = random.Pick(parents);
    AddBelow(parent, SubAccountName(parent, random), None, random);
  } else {
    const AccountWords words = WordsForAccounts(type);
    const std::string_view area = random.Pick(words.areas);
    Add(type, fmt::format("{} {}", area, random.Pick(words.purposes)), None, random);
  }
}

// Tries a few times to find a name that needs no number and differs from the parent's.
std::string_view ChartOfAccounts::SubAccountName(std::size_t parent, Random& random) const {
  std::string_view name = random.Pick(SubAccountNames());
  for (int attempt = 0; attempt < 5; ++attempt) {
    if (name != accounts_[parent].name && !names_.IsTaken(accounts_[parent].fullName, name)) break;
    name = random.Pick(SubAccountNames());
  }
  return name;
}

void ChartOfAccounts::Add(std::string_view type, std::string_view name, AccountRole role, Random& random) {
  Account account;
  account.type = type;
  account.role = role;
  account.name = names_.Take("", name);
  account.fullName = account.name;
  Complete(std::move(account), random);
}

void ChartOfAccounts::AddBelow(std::size_t parent, std::string_view name, AccountRole role, Random& random) {
  accounts_[parent].hasChildren = true;
  Account account;
  account.type = accounts_[parent].type;
  account.role = role;
  account.parent = parent;
  account.sublevel = accounts_[parent].sublevel + 1;
  account.name = names_.Take(accounts_[parent].fullName, name);
  account.fullName = fmt::format("{}:{}", accounts_[parent].fullName, account.name);
  Complete(std::move(account), random);
}

void ChartOfAccounts::Complete(Account&& account, Random& random) {
  const std::size_t index = accounts_.size();
  const std::size_t type = TypeOrder(account.type);
  account.listId = ListIdText(static_cast<std::int64_t>(index) + 1, begun_);
  account.created = EntryTime(static_cast<std::int64_t>(index) + 1, begun_);
  account.number =
      fmt::format("{}", (type + 1) * 10'000 + static_cast<std::size_t>(++accountsOfType_[type]) * 10);
  account.reference = ReferenceLines(account.listId, account.fullName);
  account.typical = random.Between(40, 900) * 100;
  if (account.role == None && account.sublevel <= deepestParent) possibleParents_[type].push_back(index);
  roles_[static_cast<std::size_t>(account.role)] = index;
  accounts_.push_back(std::move(account));
}

Cents ChartOfAccounts::Balance(std::size_t account) const {
  const Account& balanced = accounts_[account];
  return IsCreditType(balanced.type) ? -balanced.debits : balanced.debits;
}

std::vector<Cents> ChartOfAccounts::TotalBalances() const {
  std::vector<Cents> totals;
  for (std::size_t account = 0; account < accounts_.size(); ++account) totals.push_back(Balance(account));
  // Accounts follow their parents, so in reverse order each sum is complete before it is added to its
  // parent's.
  for (std::size_t account = accounts_.size(); account-- > 0;) {
    if (accounts_[account].sublevel > 0) totals[accounts_[account].parent] += totals[account];
  }
  return totals;
}

bool IsCreditType(std::string_view accountType) {
  constexpr std::array creditTypes = {std::string_view("AccountsPayable"),
                                      std::string_view("CreditCard"),
                                      std::string_view("OtherCurrentLiability"),
                                      std::string_view("LongTermLiability"),
                                      std::string_view("Equity"),
                                      std::string_view("Income")};
  return std::ranges::find(creditTypes, accountType) != creditTypes.end();
}

}  // namespace krnqb::sample_company
