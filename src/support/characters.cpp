#include "support/characters.h"

#include <cstdint>
#include <cstring>

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

// Returns how many bytes of a text are ASCII before the first that is not, which are nearly all.
std::size_t LeadingAscii(std::string_view text) noexcept {
  constexpr std::uint64_t beyondAscii = 0x8080808080808080;
  std::size_t length = 0;
  for (std::uint64_t block = 0; length + sizeof block <= text.size(); length += sizeof block) {
    std::memcpy(&block, text.data() + length, sizeof block);
    if ((block & beyondAscii) != 0) break;
  }
  while (length < text.size() && Byte(text[length]) < 0x80) ++length;
  return length;
}

// Returns whether a byte can be the second of a character. Excludes halves of surrogate pairs, characters
// encoded in more bytes than they need and those above U+10FFFF.
bool CanFollow(unsigned char first, unsigned char second) noexcept {
  const unsigned char least = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
  const unsigned char most = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
  return second >= least && second <= most;
}

}  // namespace

std::optional<std::size_t> InvalidUtf8(std::string_view text) noexcept {
  for (std::size_t at = LeadingAscii(text); at < text.size(); at += LeadingAscii(text.substr(at))) {
    const unsigned char first = Byte(text[at]);
    const std::size_t following = FollowingBytes(first);
    if (first < 0xC2 || first > 0xF4) return at;
    for (std::size_t index = 1; index <= following; ++index) {
      const std::size_t next = at + index;
      if (next == text.size()) return next;
      const unsigned char byte = Byte(text[next]);
      if (index == 1 ? !CanFollow(first, byte) : (byte & 0xC0U) != 0x80U) return next;
    }
    at += following + 1;
  }
  return std::nullopt;
}

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
    std::size_t plain = 0;  // ASCII
    while (plain < text.size() && Byte(text[plain]) < 0x80) ++plain;
    text.remove_prefix(plain);
    count += plain;
    if (text.empty()) break;
    TakeCharacter(text);
    ++count;
  }
  return count;
}

}  // namespace krnqb
