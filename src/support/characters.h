#pragma once

#include <cstddef>
#include <string_view>

namespace krnqb {

/// Removes the first character from a non-empty UTF-8 text and returns it. An invalid byte is removed on its
/// own and returned as U+FFFD.
char32_t TakeCharacter(std::string_view& text) noexcept;

/// Returns the number of characters (code points) in a UTF-8 text.
std::size_t CharacterCount(std::string_view text) noexcept;

}  // namespace krnqb
