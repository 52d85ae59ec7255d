#include "cli/console/progress_bar.h"

#include <fmt/format.h>

#include <algorithm>

#include "support/characters.h"

namespace krnqb::cli {
namespace {

constexpr std::int16_t barWidth = 25;

}  // namespace

void ProgressBar::Show(std::int16_t percent, std::string_view description) {
  const int filled = std::clamp<int>(percent, 0, 100) * barWidth / 100;
  const std::string line =
      fmt::format("[{:#<{}}{:.<{}}] {:3}% {}", "", filled, "", barWidth - filled, percent, description);
  const std::size_t width = CharacterCount(line);
  const std::size_t leftOver = drawnWidth_ > width ? drawnWidth_ - width : 0;
  output_ << '\r' << line << std::string(leftOver, ' ') << std::flush;
  drawnWidth_ = width;
}

void ProgressBar::Wipe() noexcept {
  if (drawnWidth_ == 0) return;
  // If the terminal accepts no output, there is nothing to erase.
  try {
    output_ << '\r' << std::string(drawnWidth_, ' ') << '\r' << std::flush;
  } catch (...) {
  }
  drawnWidth_ = 0;
}

}  // namespace krnqb::cli
