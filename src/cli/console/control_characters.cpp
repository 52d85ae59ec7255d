#include "cli/console/control_characters.h"

#include "support/characters.h"

namespace krnqb::cli {
namespace {

constexpr bool IsWithin(char32_t character, char32_t first, char32_t last) noexcept {
  return character >= first && character <= last;
}

}  // namespace

std::size_t PlainLength(std::string_view text) noexcept {
  std::size_t length = 0;
  while (length < text.size() && text[length] >= ' ' && text[length] <= '~') ++length;
  return length;
}

TextPart TakePart(std::string_view& text) noexcept {
  std::string_view rest = text;
  char32_t character = TakeCharacter(rest);
  std::size_t length = text.size() - rest.size();
  const bool surrogate = IsWithin(character, 0xD800, 0xDFFF);
  if (length == 1 || surrogate || character > 0x10FFFF) {
    length = 1;
    character = static_cast<unsigned char>(text.front());
  }
  const TextPart part{text.substr(0, length), character};
  text.remove_prefix(length);
  return part;
}

bool IsControl(char32_t character) noexcept {
  constexpr char32_t lineSeparator = 0x2028;
  constexpr char32_t paragraphSeparator = 0x2029;
  return character < U' ' || IsWithin(character, 0x7F, 0x9F) ||
         IsWithin(character, lineSeparator, paragraphSeparator) || IsWithin(character, 0x202A, 0x202E) ||
         IsWithin(character, 0x2066, 0x2069);
}

}  // namespace krnqb::cli
