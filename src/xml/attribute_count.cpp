#include "xml/attribute_count.h"

#include <algorithm>

namespace krnqb {
namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr auto npos = std::string_view::npos;

// The length of the shortest attribute: a blank, a name of one character, "=" and two quotes.
constexpr std::size_t shortestAttribute = 5;

struct Markup {
  std::string_view begin;
  std::string_view end;
};
constexpr Markup opaqueMarkup[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};  // NOLINT

// Returns the length of the comment, CDATA section or instruction at the start of the text, or 0 if there is
// none; tags inside it are not tags.
std::size_t OpaqueLength(std::string_view text) {
  for (const auto& [begin, end] : opaqueMarkup) {
    if (!text.starts_with(begin)) continue;
    const std::size_t found = text.find(end, begin.size());
    return found == npos ? text.size() : found + end.size();
  }
  return 0;
}

// Returns whether the tag at the start of the text has more attributes than that. `tag` begins with "<".
bool HasMoreAttributes(std::string_view tag, std::size_t most) {
  std::size_t count = 0;
  for (;;) {
    const std::size_t mark = tag.find_first_of("=>");
    if (mark == npos || tag[mark] == '>') return false;
    const std::size_t open = tag.find_first_not_of(blanks, mark + 1);
    if (open == npos || (tag[open] != '"' && tag[open] != '\'')) return false;
    if (++count > most) return true;
    const std::size_t close = tag.find(tag[open], open + 1);
    if (close == npos) return false;
    tag.remove_prefix(close + 1);
  }
}

// A crowded tag is so long that one of these blocks lies wholly in it, and it has no "<" but its first.
bool HasLongStretchWithoutTags(std::string_view text, std::size_t block) {
  for (std::size_t begin = 0; begin + block <= text.size(); begin += block) {
    if (text.substr(begin, block).find('<') == npos) return true;
  }
  return false;
}

}  // namespace

std::optional<long> FindCrowdedTag(std::string_view text, std::size_t most) {
  if (!HasLongStretchWithoutTags(text, most * shortestAttribute / 2)) return std::nullopt;
  for (std::size_t tag = text.find('<'); tag != npos;) {
    if (const std::size_t length = OpaqueLength(text.substr(tag)); length > 0) {
      tag = text.find('<', tag + length);
      continue;
    }
    // An attribute's value cannot contain "<".
    const std::size_t next = text.find('<', tag + 1);
    const std::string_view untilNext = text.substr(tag, next == npos ? npos : next - tag);
    if (untilNext.size() > most * shortestAttribute && HasMoreAttributes(untilNext, most)) {
      return 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(tag), '\n');
    }
    tag = next;
  }
  return std::nullopt;
}

}  // namespace krnqb
