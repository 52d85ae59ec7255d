#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace krnqb {

/// Stores many short texts in a few large blocks of memory.
class TextArena {
 public:
  /// Stores a copy of the text. The returned view stays valid for the lifetime of the arena, even if it is
  /// moved.
  std::string_view Keep(std::string_view text);

 private:
  // Arrays of a size known at run time, left uninitialized.
  // NOLINTNEXTLINE(cppcoreguidelines-avoid-c-arrays,modernize-avoid-c-arrays)
  std::vector<std::unique_ptr<char[]>> pieces_;
  std::size_t used_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace krnqb
