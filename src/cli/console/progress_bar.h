#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string_view>

namespace krnqb::cli {

/// A bar on one line of a terminal, drawn over at each step and wiped away in the end.
class ProgressBar {
 public:
  /// Draws nothing until the first step. The stream outlives the bar.
  explicit ProgressBar(std::ostream& output) noexcept : output_(output) {}
  ~ProgressBar() { Wipe(); }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// `percent` is 0 to 100.
  void Show(std::int16_t percent, std::string_view description);

  /// Gives the line back to other output.
  void Wipe() noexcept;

 private:
  std::ostream& output_;
  std::size_t drawnWidth_ = 0;
};

}  // namespace krnqb::cli
