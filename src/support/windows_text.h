#pragma once

#include <string>
#include <string_view>

namespace krnqb {

// Texts are UTF-8 inside the component and UTF-16 outside. What is invalid becomes U+FFFD; embedded NULs
// stay.

std::string Utf8(std::wstring_view text);
std::wstring Wide(std::string_view text);

}  // namespace krnqb
