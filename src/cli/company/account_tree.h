#pragma once

#include <optional>
#include <string>
#include <vector>

#include "krnqb/xml_element.h"

namespace krnqb::cli {

/// An account with its sub-accounts, in the order of the account list. Texts are as QuickBooks sends them; a
/// missing one is empty.
struct AccountNode {
  std::string listId;
  std::string name;
  std::string type;
  std::string balance;
  std::string totalBalance;      ///< including sub-accounts
  std::optional<bool> selected;  ///< in the plan; absent for sub-accounts, and without a plan
  std::vector<AccountNode> subAccounts;
};

/// Returns the accounts of an answer to an account query as trees. An account is placed below its parent,
/// whichever comes first in the answer; it is placed at the top if its parent is missing, or if it is its own
/// ancestor.
std::vector<AccountNode> AccountTree(const XmlElement& answer);

/// Returns the trees as a table for people: name indented by depth, type, balances and, if any account has a
/// selection, which accounts are selected.
std::string AccountTreeText(const std::vector<AccountNode>& accounts);

}  // namespace krnqb::cli
