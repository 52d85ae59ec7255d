#include "cli/console/wrapped_names.h"

#include "support/characters.h"

namespace krnqb::cli {
std::string WrappedNames(std::string_view lead, const std::vector<std::string>& names, std::size_t width) {
  constexpr std::string_view indent = "    ";
  std::string text;
  std::string line(lead);
  for (std::size_t index = 0; index < names.size(); ++index) {
    const std::string word = names[index] + (index + 1 < names.size() ? "," : "");
    const bool fits = CharacterCount(line) + 1 + CharacterCount(word) <= width;
    if (!fits) {
      text += line + '\n';
      line = std::string(indent) + word;
    } else {
      line += ' ' + word;
    }
  }
  return text + line + '\n';
}

}  // namespace krnqb::cli
