#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace krnqb::sample_company {

/// Random choices that depend on the seed alone: the standard fixes the engine's numbers, but not how its own
/// distributions use them, so these are written out. A call takes no two choices as arguments: which would be
/// made first is the compiler's.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  /// 0 up to, not including, `bound`, which is 1 to 4294967296.
  std::uint64_t Below(std::uint64_t bound) { return ((engine_() >> 32) * bound) >> 32; }
  /// Both ends included.
  std::int64_t Between(std::int64_t least, std::int64_t greatest) {
    return least + static_cast<std::int64_t>(Below(static_cast<std::uint64_t>(greatest - least + 1)));
  }
  bool Chance(unsigned percent) { return Below(100) < percent; }

  /// An amount near a typical one: mostly below it, seldom up to more than twice as much, at least 1.
  std::int64_t Around(std::int64_t typical) {
    const std::int64_t permille = 400 + static_cast<std::int64_t>(Below(1000) * Below(1000) / 500);
    return std::max<std::int64_t>(1, typical * permille / 1000);
  }

  /// An element of a container that is not empty.
  template <typename Container>
  const auto& Pick(const Container& container) {
    return container[static_cast<std::size_t>(Below(container.size()))];
  }

  template <typename Element>
  void Shuffle(std::vector<Element>& elements) {
    for (std::size_t rest = elements.size(); rest > 1; --rest) {
      std::swap(elements[rest - 1], elements[static_cast<std::size_t>(Below(rest))]);
    }
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace krnqb::sample_company
