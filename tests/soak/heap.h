#pragma once

#include <malloc.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <memory>

namespace krnqb::soak {

/// Returns the bytes that the program has allocated and not released.
inline long long BytesInUse() {
  return static_cast<long long>(::mallinfo2().uordblks) + static_cast<long long>(::mallinfo2().hblkhd);
}

/// Returns whether `BytesInUse` sees allocations; a sanitizer's allocator hides them.
inline bool HeapIsVisible() {
  constexpr std::size_t size = 100000;
  const long long before = BytesInUse();
  const auto block = std::make_unique<char[]>(size);  // NOLINT(modernize-avoid-c-arrays)
  return block != nullptr && BytesInUse() - before >= static_cast<long long>(size);
}

/// Returns the number of open descriptors.
inline long OpenDescriptors() {
  return static_cast<long>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                                         std::filesystem::directory_iterator()));
}

/// The number of imports of one test, and after how many of them the heap is looked at first: until then the
/// allocator keeps more and more freed blocks at hand, which count as used.
struct Rounds {
  int first = 150;
  int all = 300;
};

/// Returns 200 and 2,000 in the long form.
inline Rounds SoakRounds() {
  return std::getenv("KRNQB_NIGHTLY") == nullptr ? Rounds()
                                                 : Rounds{200, 2000};  // NOLINT(concurrency-mt-unsafe)
}

}  // namespace krnqb::soak
