#include "cli/import/progress/display.h"

#include <fmt/format.h>

#include <cmath>
#include <utility>

namespace krnqb::cli {
namespace {

using std::chrono::milliseconds;

// Before that, the share that is done says little about the rest.
constexpr milliseconds leastElapsed{3000};
constexpr double leastDone = 0.1;
constexpr milliseconds leastLeft{1000};
constexpr milliseconds mostLeft = std::chrono::hours(100);

milliseconds SteadyTime() {
  return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

// Rounds up: a time that turns out too long is a nicer surprise.
std::int64_t RoundedUp(std::int64_t value, std::int64_t unit) noexcept {
  return (value + unit - 1) / unit * unit;
}

}  // namespace

std::string TimeLeftText(milliseconds left) {
  constexpr std::int64_t minute = 60;
  const std::int64_t seconds = RoundedUp(left.count(), 1000) / 1000;
  if (seconds <= 10) return fmt::format("about {} s left", seconds);
  if (seconds <= 55) return fmt::format("about {} s left", RoundedUp(seconds, 5));
  const std::int64_t minutes = RoundedUp(seconds, minute) / minute;
  if (minutes < 60) return fmt::format("about {} min left", minutes);
  return fmt::format("about {} h {} min left", minutes / 60, minutes % 60);
}

ProgressDisplay::ProgressDisplay(ProgressBar& bar, const ImportScope& scope,
                                 std::function<milliseconds()> stopwatch)
    : bar_(bar),
      phases_(scope),
      stopwatch_(stopwatch ? std::move(stopwatch) : SteadyTime),
      start_(stopwatch_()) {}

void ProgressDisplay::Show(std::int16_t percent, std::string_view description) {
  Draw(phases_.Next(percent, description));
}

void ProgressDisplay::ShowEnd() {
  Draw(phases_.End());
}

void ProgressDisplay::Draw(const ImportPosition& position) {
  bar_.Show(static_cast<int>(position.done * 100), position.phase, TimeLeft(position.done));
}

std::string ProgressDisplay::TimeLeft(double done) const {
  const milliseconds elapsed = stopwatch_() - start_;
  if (elapsed < leastElapsed || done < leastDone) return {};
  const milliseconds left(std::llround(static_cast<double>(elapsed.count()) * (1 - done) / done));
  if (left < leastLeft || left >= mostLeft) return {};
  return TimeLeftText(left);
}

}  // namespace krnqb::cli
