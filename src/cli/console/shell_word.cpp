#include "cli/console/shell_word.h"

#include <algorithm>

namespace krnqb::cli {
namespace {

bool IsPlain(char character) noexcept {
  constexpr std::string_view signs = "%+,-./:=@_";
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || signs.find(character) != std::string_view::npos;
}

}  // namespace

std::string ShellWord(std::string_view text) {
  if (!text.empty() && std::ranges::all_of(text, IsPlain)) return std::string(text);
  std::string word = "'";
  for (const char character : text) {
    if (character == '\'') {
      word += R"('\'')";
    } else {
      word += character;
    }
  }
  return word += '\'';
}

}  // namespace krnqb::cli
