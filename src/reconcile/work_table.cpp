#include "reconcile/work_table.h"

#include "krnqb/keyed_collection.h"

namespace krnqb::reconcile {

void MonthAmounts::Explain(CauseCode code, const ExactAmount& amount,
                           const std::vector<std::uint32_t>& transactions, const std::string& type) {
  if (amount.IsZero()) return;
  CauseSum& sum = causes[{code, type}];
  sum.amount += amount;
  sum.transactions.insert(sum.transactions.end(), transactions.begin(), transactions.end());
}

std::size_t WorkTable::LineOf(Group group, std::string_view account) {
  // Few names are asked for, but each very often.
  TextMap<std::size_t>& spellings = spellings_[static_cast<std::size_t>(group)];
  if (const auto known = spellings.find(account); known != spellings.end()) return known->second;
  const auto [position, added] = positions_.try_emplace({group, FoldedKey(account)}, lines_.size());
  if (added) lines_.push_back({.group = group, .account = std::string(account), .months = {}});
  spellings.emplace(account, position->second);
  return position->second;
}

std::optional<std::size_t> WorkTable::Find(Group group, std::string_view account) const {
  const auto found = positions_.find({group, FoldedKey(account)});
  return found == positions_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace krnqb::reconcile
