#include "spreadsheet/cell_text.h"

#include <fmt/format.h>

#include "support/characters.h"

namespace krnqb::spreadsheet {
namespace {

constexpr std::size_t longestText = 32'767;

bool IsControl(char32_t character) noexcept {
  return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

}  // namespace

std::string_view Beginning(std::string_view text, std::size_t units) noexcept {
  std::string_view rest = text;
  std::size_t used = 0;
  while (!rest.empty()) {
    const std::string_view before = rest;
    used += TakeCharacter(rest) > 0xFFFF ? 2U : 1U;
    if (used > units) return text.substr(0, text.size() - before.size());
  }
  return text;
}

std::string WithoutControlCharacters(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t character = TakeCharacter(text);
    if (IsControl(character)) {
      result += ' ';
    } else {
      result += before.substr(0, before.size() - text.size());
    }
  }
  return result;
}

bool FitsCell(std::string_view text) noexcept {
  return Beginning(text, longestText).size() == text.size();
}

std::string CellText(std::string_view text) {
  std::string shown = WithoutControlCharacters(text);
  if (FitsCell(shown)) return shown;
  return std::string(Beginning(shown, longestText - 1)) + "…";
}

std::string ColumnName(std::size_t column) {
  constexpr std::size_t letters = 26;
  std::string name(1, static_cast<char>('A' + column % letters));
  while ((column /= letters) > 0) {
    --column;
    name.insert(name.begin(), static_cast<char>('A' + column % letters));
  }
  return name;
}

std::string CellName(std::size_t row, std::size_t column) {
  return fmt::format("{}{}", ColumnName(column), row + 1);
}

}  // namespace krnqb::spreadsheet
