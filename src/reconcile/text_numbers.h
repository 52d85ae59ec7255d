#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "xml/text_arena.h"

namespace krnqb::reconcile {

/// Numbers texts from 0, in the order in which they are first asked for. Holds millions of texts in a few
/// blocks of memory.
class TextNumbers {
 public:
  /// Returns the number of a text; the same text has the same number. Is faster if that is `guess`.
  std::uint32_t NumberOf(std::string_view text, std::uint32_t guess = 0);
  /// Returns the text with a number that `NumberOf` has returned, as long as the object lives.
  std::string_view TextOf(std::uint32_t number) const { return texts_[number].text; }

 private:
  struct Text {
    std::string_view text;
    std::size_t hash;
  };

  // Returns the place of a text, or the free one at which it belongs.
  std::size_t PlaceOf(std::string_view text, std::size_t hash) const noexcept;
  void Grow();

  TextArena arena_;
  std::vector<Text> texts_;  // by number
  std::uint32_t last_ = 0;   // asked for
  std::vector<std::uint32_t>
      places_;  // number + 1 of a text at a place of its hash, or 0; half of them or more
};

}  // namespace krnqb::reconcile
