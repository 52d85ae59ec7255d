#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace krnqb::company {

/// An entry of a list, with what its place depends on.
struct ListEntry {
  std::string key;
  std::string parentKey;  ///< the key of the entry above it; empty for none
  std::size_t rank = 0;   ///< the place of its account type or item kind among the others
};

/// The order in which a list is answered, as positions in `entries`: by rank, within a rank as in `entries`,
/// but each parent right before its children. A parent counts only when it is in the list with the same rank.
/// Parents that run in a circle are parted where the circle is first met.
std::vector<std::size_t> ListOrder(std::span<const ListEntry> entries);

}  // namespace krnqb::company
