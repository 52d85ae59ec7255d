#include "sample_company/obligations.h"

namespace krnqb::sample_company {
namespace {

constexpr std::chrono::days lastMoment{12};  // before the last day, no new obligations

}  // namespace

bool Obligations::CanPromise(const Obligation& obligation, Day due) const {
  if (due > lastDay_ - lastMoment) return false;
  return open_.contains(obligation) || Count() + 1 <= room_;
}

void Obligations::Promise(const Obligation& obligation, Day due, OpenItem&& item) {
  const auto [entry, isNew] = open_.try_emplace(obligation, Open{due, {}});
  entry->second.items.push_back(std::move(item));
  if (isNew) byDay_.emplace(due, obligation);
}

std::optional<Obligation> Obligations::DueBy(Day day) const {
  if (byDay_.empty() || byDay_.begin()->first > day) return std::nullopt;
  return byDay_.begin()->second;
}

std::vector<OpenItem> Obligations::Settle(const Obligation& obligation) {
  const auto entry = open_.find(obligation);
  if (entry == open_.end()) return {};
  std::vector<OpenItem> items = std::move(entry->second.items);
  byDay_.erase({entry->second.due, obligation});
  open_.erase(entry);
  return items;
}

}  // namespace krnqb::sample_company
