#pragma once

#include <cstddef>

namespace krnqb::testing {

/// What a process holds.
struct ProcessUse {
  std::size_t heapBytes = 0;  ///< in allocated blocks of all its heaps
  std::size_t privateBytes = 0;
  int handles = 0;
};

/// Returns what this process holds now.
ProcessUse OwnUse();

}  // namespace krnqb::testing
