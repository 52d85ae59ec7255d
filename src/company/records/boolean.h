#pragma once

#include <string_view>

namespace krnqb::company {

/// Returns whether a boolean field of a record is true.
constexpr bool IsTrueText(std::string_view text) noexcept {
  return text == "true" || text == "1";
}

}  // namespace krnqb::company
