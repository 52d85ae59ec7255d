#include "cli/company/account_tree.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

#include "cli/console/text_table.h"

namespace krnqb::cli {
namespace {

constexpr std::size_t none = static_cast<std::size_t>(-1);

std::string TextOf(const XmlElement& element) {
  return element ? element.Text() : std::string();
}

AccountNode NodeOf(const XmlElement& account) {
  return {.listId = TextOf(account.Child("ListID")),
          .name = TextOf(account.Child("Name")),
          .type = TextOf(account.Child("AccountType")),
          .balance = TextOf(account.Child("Balance")),
          .totalBalance = TextOf(account.Child("TotalBalance")),
          .selected = std::nullopt,
          .subAccounts = {}};
}

// The index of each account's parent, or `none` for top-level accounts.
std::vector<std::size_t> ParentsOf(const std::vector<XmlElement>& accounts) {
  std::unordered_map<std::string, std::size_t> positions;
  for (std::size_t index = 0; index < accounts.size(); ++index) {
    positions.emplace(TextOf(accounts[index].Child("ListID")), index);
  }
  std::vector<std::size_t> parents(accounts.size(), none);
  for (std::size_t index = 0; index < accounts.size(); ++index) {
    const auto parent = positions.find(TextOf(accounts[index].Child("ParentRef").Child("ListID")));
    if (parent == positions.end()) continue;
    std::size_t ancestor = parent->second;
    while (ancestor != none && ancestor != index) ancestor = parents[ancestor];
    if (ancestor == none) parents[index] = parent->second;
  }
  return parents;
}

AccountNode TreeOf(std::size_t index, const std::vector<XmlElement>& accounts,
                   const std::vector<std::vector<std::size_t>>& children) {
  AccountNode node = NodeOf(accounts[index]);
  for (const std::size_t child : children[index])
    node.subAccounts.push_back(TreeOf(child, accounts, children));
  return node;
}

bool AnySelection(const std::vector<AccountNode>& accounts) {
  return std::any_of(accounts.begin(), accounts.end(),
                     [](const AccountNode& account) { return account.selected.has_value(); });
}

void AddRows(TextTable& table, const std::vector<AccountNode>& accounts, std::size_t depth, bool selection) {
  for (const AccountNode& account : accounts) {
    std::vector<std::string> row{std::string(2 * depth, ' ') + account.name, account.type, account.balance,
                                 account.totalBalance};
    if (selection) row.emplace_back(account.selected.value_or(false) ? "selected" : "");
    table.AddRow(std::move(row));
    AddRows(table, account.subAccounts, depth + 1, selection);
  }
}

}  // namespace

std::vector<AccountNode> AccountTree(const XmlElement& answer) {
  const std::vector<XmlElement> accounts = answer.SelectAll("//AccountRet");
  const std::vector<std::size_t> parents = ParentsOf(accounts);
  std::vector<std::vector<std::size_t>> children(accounts.size());
  for (std::size_t index = 0; index < accounts.size(); ++index) {
    if (parents[index] != none) children[parents[index]].push_back(index);
  }
  std::vector<AccountNode> trees;
  for (std::size_t index = 0; index < accounts.size(); ++index) {
    if (parents[index] == none) trees.push_back(TreeOf(index, accounts, children));
  }
  return trees;
}

std::string AccountTreeText(const std::vector<AccountNode>& accounts) {
  const bool selection = AnySelection(accounts);
  TextTable table({Alignment::Left, Alignment::Left, Alignment::Right, Alignment::Right, Alignment::Left});
  std::vector<std::string> headings{"Account", "Type", "Balance", "With sub-accounts"};
  if (selection) headings.emplace_back("In the plan");
  table.AddRow(std::move(headings));
  AddRows(table, accounts, 0, selection);
  return table.Text();
}

}  // namespace krnqb::cli
