#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace krnqb::cli {

/// One character of a text, or one byte that belongs to no character.
struct TextPart {
  std::string_view bytes;
  char32_t character = 0;  ///< of a stray byte its value, which no part that is a character has with one byte

  bool IsStrayByte() const noexcept { return bytes.size() == 1 && character >= 0x80; }
};

/// Returns how many bytes a text begins with that are printable characters of ASCII. They are passed as they
/// are, and nearly every text has no others.
std::size_t PlainLength(std::string_view text) noexcept;

/// Removes the first part from a non-empty text and returns it.
TextPart TakePart(std::string_view& text) noexcept;

/// Returns whether a terminal might obey the character instead of showing it: the control characters of ASCII
/// and of Latin-1 (C1, also as stray bytes), and those that end lines or override the direction of writing.
/// Line feed and tab count too.
bool IsControl(char32_t character) noexcept;

}  // namespace krnqb::cli
