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

/// The purpose of a special account. Special accounts never have sub-accounts.
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
  std::string fullName;  ///< the names from the top-level account down, separated by ":"
  std::string number;
  std::string_view type;
  AccountRole role = AccountRole::None;
  std::size_t parent = 0;  ///< an index; valid if the sublevel is not 0
  int sublevel = 0;        ///< 0 to 2
  bool hasChildren = false;
  std::string reference;     ///< the elements of a reference to it
  std::int64_t created = 0;  ///< creation time, in seconds since 1970
  Cents typical = 0;         ///< amount of a typical posting
  Cents debits = 0;          ///< opening balance and postings, credits negative, without sub-accounts
};

/// The account tree: the accounts that every company has, and as many more as requested. Accounts are
/// identified by index.
class ChartOfAccounts {
 public:
  /// `count` must be at least `GeneratorBounds::leastAccounts`; `begun` is when the company was set up, in
  /// seconds since 1970.
  ChartOfAccounts(std::int64_t count, std::int64_t begun, Random& random);

  const Account& operator[](std::size_t account) const { return accounts_[account]; }
  std::size_t Size() const { return accounts_.size(); }
  std::size_t Of(AccountRole role) const { return roles_[static_cast<std::size_t>(role)]; }

  /// Posts a debit, or a credit if negative.
  void Post(std::size_t account, Cents debit) { accounts_[account].debits += debit; }
  /// Returns the balance with the sign of the account's type: credits are positive for debts, equity and
  /// income.
  Cents Balance(std::size_t account) const;
  /// Returns the balance of each account including its sub-accounts.
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
  std::vector<std::vector<std::size_t>> possibleParents_;  // by the rank of the type
  UniqueNames names_;
  std::int64_t begun_;
};

/// Returns whether balances of this type are shown as credits.
bool IsCreditType(std::string_view accountType);

}  // namespace krnqb::sample_company
