#pragma once

#include <optional>
#include <string>
#include <vector>

#include "krnqb/xml_element.h"

namespace krnqb::cli {

/// An account with its sub-accounts, in the order of the list that it was read from. Texts are QuickBooks'
/// own, empty where it names none.
struct AccountNode {
  std::string listId;
  std::string name;
  std::string type;
  std::string balance;
  std::string totalBalance;      ///< with its sub-accounts'
  std::optional<bool> selected;  ///< of a top-level expense account of a plan; none when no plan was asked
  std::vector<AccountNode> subAccounts;
};

/// The accounts of an answer to an account query as trees: each account below its parent, wherever both stand
/// in the answer. An account whose parent is not in the answer, or that is among its own ancestors, stands at
/// the top.
std::vector<AccountNode> AccountTree(const XmlElement& answer);

/// The trees for a person: name indented by depth, type, balances and, when a plan was asked, what is
/// selected in it.
std::string AccountTreeText(const std::vector<AccountNode>& accounts);

}  // namespace krnqb::cli
