#pragma once

#include <cstdlib>

namespace krnqb::faults {

/// Returns whether this is the long form, which leaves nothing out.
inline bool Nightly() {
  return std::getenv("KRNQB_NIGHTLY") != nullptr;  // NOLINT(concurrency-mt-unsafe)
}

/// Returns the number of the next failure to try: the long form tries every one up to 2,000 and then every
/// 97th, the everyday form every one up to `all` and then every `stride`th.
inline long Next(long number, long all, long stride) {
  if (Nightly()) return number < 2000 ? number + 1 : number + 97;
  return number < all ? number + 1 : number + stride;
}

}  // namespace krnqb::faults
