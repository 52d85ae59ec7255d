#include "spreadsheet/sheet_names.h"

#include <fmt/format.h>

#include "krnqb/keyed_collection.h"
#include "spreadsheet/cell_text.h"

namespace krnqb::spreadsheet {
namespace {

constexpr std::size_t longestName = 31;

bool IsTrimmed(char character) noexcept {
  return character == '\'' || character == ' ';
}

std::string Trimmed(std::string text) {
  while (!text.empty() && IsTrimmed(text.back())) text.pop_back();
  std::size_t first = 0;
  while (first < text.size() && IsTrimmed(text[first])) ++first;
  return text.substr(first);
}

std::string Allowed(std::string_view wanted) {
  std::string name = WithoutControlCharacters(wanted);
  for (char& character : name) {
    constexpr std::string_view forbidden = "[]:*?/\\";
    if (forbidden.find(character) != std::string_view::npos) character = '-';
  }
  name = Trimmed(std::move(name));
  return name.empty() ? "Sheet" : name;
}

}  // namespace

std::string SheetNames::Add(std::string_view wanted) {
  const std::string allowed = Allowed(wanted);
  std::string name = Trimmed(std::string(Beginning(allowed, longestName)));
  for (std::size_t number = 2; !folded_.insert(FoldedKey(name)).second; ++number) {
    const std::string suffix = fmt::format(" ({})", number);
    name = Trimmed(std::string(Beginning(allowed, longestName - suffix.size()))) + suffix;
  }
  return name;
}

}  // namespace krnqb::spreadsheet
