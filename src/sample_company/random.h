#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace krnqb::sample_company {

/// Random choices that depend only on the seed. The standard specifies the engine's numbers but not the
/// results of its distributions, hence the distributions here. Never make two choices in the arguments of one
/// call: their order of evaluation is unspecified.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  /// Returns a number from 0 to less than `bound`, which is 1 to 4294967296.
  std::uint64_t Below(std::uint64_t bound) { return ((engine_() >> 32) * bound) >> 32; }
  /// Returns a number from `least` to `greatest`, inclusive.
  std::int64_t Between(std::int64_t least, std::int64_t greatest) {
    return least + static_cast<std::int64_t>(Below(static_cast<std::uint64_t>(greatest - least + 1)));
  }
  bool Chance(unsigned percent) { return Below(100) < percent; }

  /// Returns an amount near a typical one: mostly below it, rarely more than twice as much, at least 1.
  std::int64_t Around(std::int64_t typical) {
    const std::int64_t permille = 400 + static_cast<std::int64_t>(Below(1000) * Below(1000) / 500);
    return std::max<std::int64_t>(1, typical * permille / 1000);
  }

  /// Returns an element of a container, which must not be empty.
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
