#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace krnqb::company {

/// The qbXML versions, in order. A processor supports its own version and earlier ones.
inline constexpr std::array<std::string_view, 3> qbxmlVersions = {"1.0", "1.1", "2.0"};

/// Returns the index of a version among them; nullopt for any other text.
constexpr std::optional<std::size_t> VersionOrder(std::string_view version) noexcept {
  for (std::size_t order = 0; order < qbxmlVersions.size(); ++order) {
    if (qbxmlVersions[order] == version) return order;
  }
  return std::nullopt;
}

}  // namespace krnqb::company
