#include "cli/console/progress_bar.h"

#include <fmt/format.h>

#include <algorithm>

#include "support/display_width.h"

namespace krnqb::cli {
namespace {

constexpr std::size_t leastTerminalWidth = 20;
constexpr std::size_t leastBarWidth = 10;
constexpr std::size_t textWidth = 52;    // of phase and remark, on a wide terminal
constexpr std::size_t percentWidth = 7;  // the brackets and " 100%"

// The text has the same room in every step, so that the bar keeps its width.
std::size_t BarWidth(std::size_t lineWidth) {
  const std::size_t forBarAndText = lineWidth - percentWidth;
  const std::size_t forText = std::min(textWidth, forBarAndText * 2 / 3);
  return std::max(leastBarWidth, forBarAndText - forText);
}

// The phase, and the remark if both fit.
std::string Text(std::string_view phase, std::string_view remark, std::size_t room) {
  constexpr std::size_t leastRoom = 6;
  if (room < leastRoom) return {};
  const std::string both = remark.empty() ? std::string(phase) : fmt::format("{}, {}", phase, remark);
  return ' ' + (DisplayWidth(both) < room ? both : ShortenedToWidth(phase, room - 1));
}

std::string BarLine(std::size_t lineWidth, int percent, std::string_view phase, std::string_view remark) {
  const std::size_t barWidth = BarWidth(lineWidth);
  const std::size_t filled = static_cast<std::size_t>(percent) * barWidth / 100;
  return fmt::format("[{:#<{}}{:.<{}}] {:3}%{}", "", filled, "", barWidth - filled, percent,
                     Text(phase, remark, lineWidth - percentWidth - barWidth));
}

}  // namespace

void ProgressBar::Show(int percent, std::string_view phase, std::string_view remark) {
  const std::size_t terminalWidth = width_();
  if (terminalWidth < leastTerminalWidth) return Wipe();
  // The last column stays free: a terminal may go to the next line once it is written.
  const std::size_t lineWidth = terminalWidth - 1;
  const std::string line = BarLine(lineWidth, std::clamp(percent, 0, 100), phase, remark);
  const std::size_t width = DisplayWidth(line);
  const std::size_t leftOver = std::max(std::min(drawnWidth_, lineWidth), width) - width;
  output_ << '\r' << line << std::string(leftOver, ' ') << std::flush;
  drawnWidth_ = width;
}

void ProgressBar::Wipe() noexcept {
  if (drawnWidth_ == 0) return;
  // If the terminal accepts no output, there is nothing to erase. If it has become narrower, a longer line
  // would go on below.
  try {
    const std::size_t terminalWidth = std::max<std::size_t>(width_(), 1);
    output_ << '\r' << std::string(std::min(drawnWidth_, terminalWidth - 1), ' ') << '\r' << std::flush;
  } catch (...) {
  }
  drawnWidth_ = 0;
}

}  // namespace krnqb::cli
