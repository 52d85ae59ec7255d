#include "xml/text_arena.h"

#include <algorithm>

namespace krnqb {
namespace {

constexpr std::size_t pieceSize = std::size_t{64} * 1024;

}  // namespace

std::string_view TextArena::Keep(std::string_view text) {
  if (text.empty()) return "";
  if (capacity_ - used_ < text.size()) {
    capacity_ = std::max(pieceSize, text.size());
    // NOLINTNEXTLINE(cppcoreguidelines-avoid-c-arrays,modernize-avoid-c-arrays)
    pieces_.push_back(std::make_unique_for_overwrite<char[]>(capacity_));
    used_ = 0;
  }
  char* const place = pieces_.back().get() + used_;
  std::ranges::copy(text, place);
  used_ += text.size();
  return {place, text.size()};
}

}  // namespace krnqb
