#include "sample_company/obligations.h"

namespace krnqb::sample_company {
namespace {

constexpr std::chrono::days lastMoment{12};  // before the last day, nothing more is promised

}  // namespace

bool Obligations::CanPromise(const Obligation& obligation, Day due) const {
  if (due > lastDay - lastMoment) return false;
  return open.contains(obligation) || Count() + 1 <= room;
}

void Obligations::Promise(const Obligation& obligation, Day due, OpenItem&& item) {
  const auto [entry, isNew] = open.try_emplace(obligation, Open{due, {}});
  entry->second.items.push_back(std::move(item));
  if (isNew) byDay.emplace(due, obligation);
}

std::optional<Obligation> Obligations::DueBy(Day day) const {
  if (byDay.empty() || byDay.begin()->first > day) return std::nullopt;
  return byDay.begin()->second;
}

std::vector<OpenItem> Obligations::Settle(const Obligation& obligation) {
  const auto entry = open.find(obligation);
  if (entry == open.end()) return {};
  std::vector<OpenItem> items = std::move(entry->second.items);
  byDay.erase({entry->second.due, obligation});
  open.erase(entry);
  return items;
}

}  // namespace krnqb::sample_company
