#include "support/characters.h"

namespace krnqb {
namespace {

constexpr char32_t replacement = 0xFFFD;

unsigned char Byte(char character) noexcept {
  return static_cast<unsigned char>(character);
}

std::size_t FollowingBytes(unsigned char first) noexcept {
  if (first >= 0xF0) return 3;
  if (first >= 0xE0) return 2;
  return first >= 0xC0 ? 1 : 0;
}

}  // namespace

char32_t TakeCharacter(std::string_view& text) noexcept {
  const unsigned char first = Byte(text.front());
  text.remove_prefix(1);
  if (first < 0x80) return first;
  const std::size_t following = FollowingBytes(first);
  if (following == 0 || following > text.size()) return replacement;
  char32_t character = first & (0x3FU >> following);
  for (std::size_t index = 0; index < following; ++index) {
    if ((Byte(text[index]) & 0xC0U) != 0x80U) return replacement;
    character = (character << 6) | (Byte(text[index]) & 0x3FU);
  }
  text.remove_prefix(following);
  return character;
}

std::size_t CharacterCount(std::string_view text) noexcept {
  std::size_t count = 0;
  while (!text.empty()) {
    TakeCharacter(text);
    ++count;
  }
  return count;
}

}  // namespace krnqb
