#pragma once

#include <cstddef>
#include <functional>
#include <ostream>
#include <string_view>
#include <utility>

#include "cli/system/terminal_width.h"

namespace krnqb::cli {

/// A progress bar on one line of a terminal, as wide as the terminal allows. Each step redraws it; the
/// destructor erases it.
class ProgressBar {
 public:
  /// Draws nothing until the first step. `width` returns the columns that the terminal has at the moment; it
  /// is asked before each drawing; null: 80. The stream must outlive the bar.
  ProgressBar(std::ostream& output, std::function<std::size_t()> width)
      : output_(output), width_(width ? std::move(width) : [] { return defaultWidth; }) {}
  ~ProgressBar() { Wipe(); }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Draws the bar: `percent` from 0 to 100, then as much of `phase` and of `remark` as there is room for. A
  /// terminal of fewer than 20 columns shows no bar.
  void Show(int percent, std::string_view phase, std::string_view remark = {});

  /// Erases the bar so that other output can use the line.
  void Wipe() noexcept;

 private:
  std::ostream& output_;
  std::function<std::size_t()> width_;
  std::size_t drawnWidth_ = 0;
};

}  // namespace krnqb::cli
