#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace krnqb {

/// Keeps many short texts in a few large pieces of memory. The views that it gives stay valid while it lives,
/// also when it is moved.
class TextArena {
 public:
  std::string_view Keep(std::string_view text);

 private:
  std::vector<std::unique_ptr<char[]>> pieces_;
  std::size_t used_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace krnqb
