#include "xml/text_arena.h"

#include <algorithm>

namespace krnqb {
namespace {

constexpr std::size_t pieceSize = 64 * 1024;

}  // namespace

std::string_view TextArena::Keep(std::string_view text) {
  if (text.empty()) return "";
  if (capacity - used < text.size()) {
    capacity = std::max(pieceSize, text.size());
    pieces.push_back(std::make_unique_for_overwrite<char[]>(capacity));
    used = 0;
  }
  char* const place = pieces.back().get() + used;
  std::ranges::copy(text, place);
  used += text.size();
  return {place, text.size()};
}

}  // namespace krnqb
