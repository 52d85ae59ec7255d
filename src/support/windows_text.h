#pragma once

#include <string>
#include <string_view>

namespace krnqb {

// Texts are UTF-8 inside the component and UTF-16 at its edges. Invalid sequences become U+FFFD; embedded
// NULs are preserved.

/// Converts a UTF-16 text to UTF-8.
std::string Utf8(std::wstring_view text);
/// Converts a UTF-8 text to UTF-16.
std::wstring Wide(std::string_view text);

}  // namespace krnqb
