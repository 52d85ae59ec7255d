#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sample_company/names.h"
#include "sample_company/random.h"
#include "sample_company/text.h"

namespace krnqb::sample_company {

/// What a particular account is there for. Such an account never has sub-accounts.
enum class AccountRole : std::size_t {
  None,
  Checking,
  Savings,
  Receivable,
  Inventory,
  Machinery,
  AccumulatedDepreciation,
  Payable,
  Card,
  PayrollLiabilities,
  Loan,
  OpeningEquity,
  Draw,
  RetainedEarnings,
  Discounts,
  Wages,
  PayrollTaxes,
  Rent,
  Interest,
  Permits,
  Depreciation,
  Count
};

struct Account {
  std::string listId;
  std::string name;
  std::string fullName;  ///< the names from the top-level account down, ":" between them
  std::string number;
  std::string_view type;
  AccountRole role = AccountRole::None;
  std::size_t parent = 0;  ///< when the sublevel is not 0
  int sublevel = 0;        ///< 0 to 2
  bool hasChildren = false;
  std::string reference;     ///< the lines that refer to it
  std::int64_t created = 0;  ///< when it came into the list, in seconds since 1970
  Cents typical = 0;         ///< size of a usual posting
  Cents debits = 0;          ///< opening balance and postings, credits negative, sub-accounts not included
};

/// The account tree: those that every company has, and more until there are as many as wanted. Accounts are
/// known by their index.
class ChartOfAccounts {
 public:
  /// `count` is at least `GeneratorBounds::leastAccounts`; `setUp` is when the company was set up.
  ChartOfAccounts(std::int64_t count, std::int64_t setUp, Random& random);

  const Account& operator[](std::size_t account) const { return accounts_[account]; }
  std::size_t Size() const { return accounts_.size(); }
  std::size_t Of(AccountRole role) const { return roles_[static_cast<std::size_t>(role)]; }

  /// Books a debit, or a credit when negative.
  void Post(std::size_t account, Cents debit) { accounts_[account].debits += debit; }
  /// The balance as the account's type shows it: of debts, equity and income the credits.
  Cents Balance(std::size_t account) const;
  /// The balances of the account and all below it, by account.
  std::vector<Cents> TotalBalances() const;

 private:
  void Add(std::string_view type, std::string_view name, AccountRole role, Random& random);
  void AddBelow(std::size_t parent, std::string_view name, AccountRole role, Random& random);
  void AddAnother(Random& random);
  std::string_view SubAccountName(std::size_t parent, Random& random) const;
  void Complete(Account&& account, Random& random);
  std::size_t Find(std::string_view name) const;

  std::vector<Account> accounts_;
  std::array<std::size_t, static_cast<std::size_t>(AccountRole::Count)> roles_{};
  std::array<int, 16> accountsOfType_{};
  std::vector<std::vector<std::size_t>> possibleParents_;  // by the type's order
  UniqueNames names_;
  std::int64_t begun_;
};

/// Whether balances of this type are shown as credits.
bool IsCreditType(std::string_view accountType);

}  // namespace krnqb::sample_company
