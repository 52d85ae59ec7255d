#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace krnqb {

/// Removes the first character from a non-empty UTF-8 text and returns it. An invalid byte is removed on its
/// own and returned as U+FFFD.
char32_t TakeCharacter(std::string_view& text) noexcept;

/// Returns the index of the first byte that cannot be where it is in UTF-8, the length of a text that ends
/// within a character, or nothing if the text is UTF-8.
std::optional<std::size_t> InvalidUtf8(std::string_view text) noexcept;

/// Returns the number of characters (code points) in a UTF-8 text.
std::size_t CharacterCount(std::string_view text) noexcept;

}  // namespace krnqb
