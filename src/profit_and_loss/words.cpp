#include "profit_and_loss/words.h"

#include <algorithm>

namespace krnqb::profit_and_loss {
namespace {

constexpr std::string_view noBreakSpace = "\u00A0";

char Lower(char character) noexcept {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool IsBlank(char character) noexcept {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

}  // namespace

std::string_view Trimmed(std::string_view text) noexcept {
  for (;;) {
    if (!text.empty() && IsBlank(text.front()))
      text.remove_prefix(1);
    else if (text.starts_with(noBreakSpace))
      text.remove_prefix(noBreakSpace.size());
    else if (!text.empty() && IsBlank(text.back()))
      text.remove_suffix(1);
    else if (text.ends_with(noBreakSpace))
      text.remove_suffix(noBreakSpace.size());
    else
      return text;
  }
}

std::string Folded(std::string_view text) {
  std::string folded(text);
  std::ranges::transform(folded, folded.begin(), Lower);
  return folded;
}

bool SameText(std::string_view left, std::string_view right) noexcept {
  return std::ranges::equal(left, right, {}, Lower, Lower);
}

bool BeginsWith(std::string_view text, std::string_view beginning) noexcept {
  return SameText(text.substr(0, beginning.size()), beginning);
}

bool Contains(std::string_view text, std::string_view part) {
  return Folded(text).find(part) != std::string::npos;
}

}  // namespace krnqb::profit_and_loss
