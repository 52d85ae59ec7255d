#pragma once

#include <string_view>

namespace krnqb::company {

/// Whether a record's text says yes.
constexpr bool IsTrue(std::string_view text) noexcept {
  return text == "true" || text == "1";
}

}  // namespace krnqb::company
