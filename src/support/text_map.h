#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace krnqb {

/// Hashes texts of every type alike, so that a map of texts is searched without making a string.
struct TextHash {
  // NOLINTNEXTLINE(readability-identifier-naming)
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
};

/// A map by texts.
template <typename Value>
using TextMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

}  // namespace krnqb
