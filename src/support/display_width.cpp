#include "support/display_width.h"

#include <algorithm>
#include <array>

#include "support/characters.h"

namespace krnqb {
namespace {

constexpr std::string_view ellipsis = "…";

struct Range {
  char32_t first;
  char32_t last;
};

constexpr std::array<Range, 6> withoutWidth{{{0x0300, 0x036F},
                                             {0x1AB0, 0x1AFF},
                                             {0x200B, 0x200F},
                                             {0x20D0, 0x20FF},
                                             {0xFE00, 0xFE0F},
                                             {0xFE20, 0xFE2F}}};

constexpr std::array<Range, 9> wide{{{0x1100, 0x115F},
                                     {0x2E80, 0x303E},
                                     {0x3041, 0xA4CF},
                                     {0xAC00, 0xD7A3},
                                     {0xF900, 0xFAFF},
                                     {0xFE30, 0xFE6F},
                                     {0xFF00, 0xFF60},
                                     {0x1F300, 0x1FAFF},
                                     {0x20000, 0x3FFFD}}};

template <std::size_t count>
bool IsIn(const std::array<Range, count>& ranges, char32_t character) noexcept {
  return std::any_of(ranges.begin(), ranges.end(),
                     [&](const Range& range) { return character >= range.first && character <= range.last; });
}

std::size_t WidthOf(char32_t character) noexcept {
  if (character < withoutWidth.front().first) return 1;
  if (IsIn(withoutWidth, character)) return 0;
  return IsIn(wide, character) ? 2 : 1;
}

}  // namespace

std::size_t DisplayWidth(std::string_view text) noexcept {
  std::size_t width = 0;
  while (!text.empty()) width += WidthOf(TakeCharacter(text));
  return width;
}

std::string ShortenedToWidth(std::string_view text, std::size_t columns) {
  if (columns == 0) return {};
  std::string_view rest = text;
  std::size_t width = 0;
  std::size_t kept = 0;  // bytes that leave a column for the ellipsis
  while (!rest.empty()) {
    width += WidthOf(TakeCharacter(rest));
    if (width > columns) return std::string(text.substr(0, kept)).append(ellipsis);
    if (width < columns) kept = text.size() - rest.size();
  }
  return std::string(text);
}

}  // namespace krnqb
