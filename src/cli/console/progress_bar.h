#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string_view>

namespace krnqb::cli {

/// A progress bar on one line of a terminal. Each step redraws it; the destructor erases it.
class ProgressBar {
 public:
  /// Draws nothing until the first step. The stream must outlive the bar.
  explicit ProgressBar(std::ostream& output) noexcept : output_(output) {}
  ~ProgressBar() { Wipe(); }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Draws the bar. `percent` is 0 to 100.
  void Show(std::int16_t percent, std::string_view description);

  /// Erases the bar so that other output can use the line.
  void Wipe() noexcept;

 private:
  std::ostream& output_;
  std::size_t drawnWidth_ = 0;
};

}  // namespace krnqb::cli
