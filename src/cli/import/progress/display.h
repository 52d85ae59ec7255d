#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "cli/console/progress_bar.h"
#include "cli/import/progress/phases.h"

namespace krnqb::cli {

/// Returns a time as people say it: "about 25 s left", "about 3 min left", "about 1 h 5 min left".
std::string TimeLeftText(std::chrono::milliseconds left);

/// Shows the progress of an import on a bar, with its phase and the time left.
class ProgressDisplay {
 public:
  /// The bar must outlive the display. `stopwatch` returns the time since a fixed moment; null is the
  /// system's steady clock.
  ProgressDisplay(ProgressBar& bar, const ImportScope& scope,
                  std::function<std::chrono::milliseconds()> stopwatch);

  /// Shows the position that an event of the component announces.
  void Show(std::int16_t percent, std::string_view description);

  /// Shows that everything has been read.
  void ShowEnd();

 private:
  void Draw(const ImportPosition& position);
  std::string TimeLeft(double done) const;

  ProgressBar& bar_;
  ImportPhases phases_;
  std::function<std::chrono::milliseconds()> stopwatch_;
  std::chrono::milliseconds start_;
};

}  // namespace krnqb::cli
