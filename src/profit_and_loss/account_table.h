#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "profit_and_loss/outline.h"
#include "profit_and_loss/report.h"
#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

/// The accounts of a report in order, found by their full names; ASCII case does not matter.
class AccountTable {
 public:
  /// Returns the index of an account, which is added if it is new, and whether it is. A new account has no
  /// amounts yet. Throws Error 13 if there are more than 20,000 accounts.
  std::pair<std::size_t, bool> Find(const CapturedReport& report, const ReportRow& row, AccountPath path);

  StatementAccount& At(std::size_t index) { return accounts_.at(index); }
  std::vector<StatementAccount> Take() { return std::move(accounts_); }

  /// Returns what identifies an account.
  static std::string KeyOf(const std::vector<std::string>& names);

 private:
  std::vector<StatementAccount> accounts_;
  std::unordered_map<std::string, std::size_t> indices_;
};

}  // namespace krnqb::profit_and_loss
