#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace krnqb::company {

/// The versions of qbXML there are, in order. A processor speaks its own and those before it.
inline constexpr std::array<std::string_view, 3> qbxmlVersions = {"1.0", "1.1", "2.0"};

/// The place of a version among them, counted from 0; nothing for any other text.
constexpr std::optional<std::size_t> VersionOrder(std::string_view version) noexcept {
  for (std::size_t order = 0; order < qbxmlVersions.size(); ++order) {
    if (qbxmlVersions[order] == version) return order;
  }
  return std::nullopt;
}

}  // namespace krnqb::company
