#include "company/records/list_order.h"

#include <algorithm>
#include <ranges>
#include <string_view>
#include <unordered_map>

namespace krnqb::company {
namespace {

constexpr std::size_t none = static_cast<std::size_t>(-1);

std::vector<std::size_t> ParentsOf(std::span<const ListEntry> entries) {
  std::unordered_map<std::string_view, std::size_t> byKey;
  for (std::size_t entry = 0; entry < entries.size(); ++entry) byKey.emplace(entries[entry].key, entry);
  std::vector<std::size_t> parents(entries.size(), none);
  for (std::size_t entry = 0; entry < entries.size(); ++entry) {
    const auto parent = byKey.find(entries[entry].parentKey);
    if (parent == byKey.end() || entries[parent->second].rank != entries[entry].rank) continue;
    parents[entry] = parent->second;
  }
  return parents;
}

// Follows the parents of each entry; an entry reached twice on the way loses its parent.
void BreakCycles(std::vector<std::size_t>& parents) {
  std::vector<std::size_t> reachedFrom(parents.size(), none);
  for (std::size_t start = 0; start < parents.size(); ++start) {
    std::size_t entry = start;
    while (reachedFrom[entry] == none) {
      reachedFrom[entry] = start;
      if (parents[entry] == none) break;
      if (reachedFrom[parents[entry]] == start) {
        parents[parents[entry]] = none;
        break;
      }
      entry = parents[entry];
    }
  }
}

}  // namespace

std::vector<std::size_t> ListOrder(std::span<const ListEntry> entries) {
  std::vector<std::size_t> parents = ParentsOf(entries);
  BreakCycles(parents);

  std::vector<std::size_t> topLevel;
  std::vector<std::vector<std::size_t>> children(entries.size());
  for (std::size_t entry = 0; entry < entries.size(); ++entry) {
    (parents[entry] == none ? topLevel : children[parents[entry]]).push_back(entry);
  }
  std::ranges::stable_sort(topLevel, {}, [&](std::size_t entry) { return entries[entry].rank; });

  std::vector<std::size_t> order;
  order.reserve(entries.size());
  std::vector<std::size_t> waiting(topLevel.rbegin(), topLevel.rend());  // the next entry is last
  while (!waiting.empty()) {
    const std::size_t entry = waiting.back();
    waiting.pop_back();
    order.push_back(entry);
    std::ranges::copy(children[entry] | std::views::reverse, std::back_inserter(waiting));
  }
  return order;
}

}  // namespace krnqb::company
