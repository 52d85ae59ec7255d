#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "krnqb/xml_element.h"

namespace krnqb::cli {

/// An account of a tree. Texts are as QuickBooks sends them; a missing one is empty.
struct AccountNode {
  std::string listId;
  std::string name;
  std::string type;
  std::string balance;
  std::string totalBalance;      ///< including sub-accounts
  std::optional<bool> selected;  ///< in the plan; absent for sub-accounts, and without a plan
  std::size_t level = 0;         ///< the number of its ancestors
};

/// Returns the accounts of an answer to an account query as trees: each account is followed by its
/// sub-accounts, in the order of the answer. An account is placed below its parent, whichever comes first in
/// the answer; it is placed at the top if its parent is missing, or if it is its own ancestor.
std::vector<AccountNode> AccountTree(const XmlElement& answer);

/// Returns the trees as a table for people: name indented by level, type, balances and, if any account has a
/// selection, which accounts are selected. A name of more than 100 characters is shortened. From level 20 on
/// the indentation stays the same and the level precedes the name in brackets.
std::string AccountTreeText(const std::vector<AccountNode>& accounts);

}  // namespace krnqb::cli
