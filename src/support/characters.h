#pragma once

#include <cstddef>
#include <string_view>

namespace krnqb {

/// Takes the first character off a UTF-8 text that is not empty and gives it. A byte that begins no whole
/// character is taken alone, as U+FFFD.
char32_t TakeCharacter(std::string_view& text) noexcept;

/// How many characters (code points) a UTF-8 text has.
std::size_t CharacterCount(std::string_view text) noexcept;

}  // namespace krnqb
