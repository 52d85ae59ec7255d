#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace krnqb::company {

/// An entry of a list, with its sort criteria.
struct ListEntry {
  std::string key;
  std::string parentKey;  ///< the key of its parent; empty at the top level
  std::size_t rank = 0;   ///< the rank of its account type or item kind
};

/// Returns the order in which a list is answered, as indexes into `entries`: by rank, within a rank as in
/// `entries`, except that children directly follow their parent. A parent counts only if it is in the list
/// with the same rank. A cycle of parents is broken at the first entry reached.
std::vector<std::size_t> ListOrder(std::span<const ListEntry> entries);

}  // namespace krnqb::company
