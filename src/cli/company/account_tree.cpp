#include "cli/company/account_tree.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "cli/console/text_table.h"
#include "support/characters.h"

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
          .level = 0};
}

// Returns the index of each account's parent as the answer states it, or `none`.
std::vector<std::size_t> StatedParents(const std::vector<XmlElement>& accounts) {
  std::unordered_map<std::string, std::size_t> positions;
  for (std::size_t index = 0; index < accounts.size(); ++index) {
    positions.emplace(TextOf(accounts[index].Child("ListID")), index);
  }
  std::vector<std::size_t> parents(accounts.size(), none);
  for (std::size_t index = 0; index < accounts.size(); ++index) {
    const auto parent = positions.find(TextOf(accounts[index].Child("ParentRef").Child("ListID")));
    if (parent != positions.end()) parents[index] = parent->second;
  }
  return parents;
}

// Makes the last account of each cycle a top-level account. Every account is passed once.
void BreakCycles(std::vector<std::size_t>& parents) {
  std::vector<std::size_t> passedFrom(parents.size(), none);
  for (std::size_t start = 0; start < parents.size(); ++start) {
    std::size_t index = start;
    while (index != none && passedFrom[index] == none) {
      passedFrom[index] = start;
      index = parents[index];
    }
    if (index == none || passedFrom[index] != start) continue;
    std::size_t last = index;
    for (std::size_t next = parents[index]; next != index; next = parents[next]) last = std::max(last, next);
    parents[last] = none;
  }
}

bool AnySelection(const std::vector<AccountNode>& accounts) {
  return std::any_of(accounts.begin(), accounts.end(),
                     [](const AccountNode& account) { return account.selected.has_value(); });
}

// Shortens a name that would fill the screen; QuickBooks itself accepts no such name.
std::string ShownName(std::string_view name) {
  constexpr std::size_t longest = 100;
  constexpr std::string_view ellipsis = "...";
  if (CharacterCount(name) <= longest) return std::string(name);
  std::string_view rest = name;
  for (std::size_t count = 0; count < longest - ellipsis.size(); ++count) TakeCharacter(rest);
  return std::string(name.substr(0, name.size() - rest.size())).append(ellipsis);
}

std::string IndentedName(const AccountNode& account) {
  constexpr std::size_t deepest = 20;
  const std::string name = ShownName(account.name);
  if (account.level < deepest) return std::string(2 * account.level, ' ') + name;
  return fmt::format("{}[{}] {}", std::string(2 * deepest, ' '), account.level, name);
}

}  // namespace

std::vector<AccountNode> AccountTree(const XmlElement& answer) {
  const std::vector<XmlElement> accounts = answer.SelectAll("//AccountRet");
  std::vector<std::size_t> parents = StatedParents(accounts);
  BreakCycles(parents);
  std::vector<std::vector<std::size_t>> children(accounts.size());
  std::vector<std::pair<std::size_t, std::size_t>> waiting;  // indexes and levels; the next account is last
  for (std::size_t index = accounts.size(); index-- > 0;) {
    if (parents[index] == none) {
      waiting.emplace_back(index, 0);
    } else {
      children[parents[index]].push_back(index);
    }
  }
  std::vector<AccountNode> trees;
  trees.reserve(accounts.size());
  while (!waiting.empty()) {
    const auto [index, level] = waiting.back();
    waiting.pop_back();
    trees.push_back(NodeOf(accounts[index]));
    trees.back().level = level;
    for (const std::size_t child : children[index]) waiting.emplace_back(child, level + 1);
  }
  return trees;
}

std::string AccountTreeText(const std::vector<AccountNode>& accounts) {
  const bool selection = AnySelection(accounts);
  TextTable table({Alignment::Left, Alignment::Left, Alignment::Right, Alignment::Right, Alignment::Left});
  std::vector<std::string> headings{"Account", "Type", "Balance", "With sub-accounts"};
  if (selection) headings.emplace_back("In the plan");
  table.AddRow(std::move(headings));
  for (const AccountNode& account : accounts) {
    std::vector<std::string> row{IndentedName(account), account.type, account.balance, account.totalBalance};
    if (selection) row.emplace_back(account.selected.value_or(false) ? "selected" : "");
    table.AddRow(std::move(row));
  }
  return table.Text();
}

}  // namespace krnqb::cli
