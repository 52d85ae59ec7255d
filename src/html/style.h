#pragma once

#include <string_view>

namespace krnqb::html {

/// Returns the style sheet of all pages.
std::string_view StyleSheet() noexcept;

/// Returns the SHA-256 of the style sheet in base64, by which a page's policy admits it and no other.
std::string_view StyleDigest() noexcept;

}  // namespace krnqb::html
