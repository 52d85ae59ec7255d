#pragma once

#include <functional>
#include <string>

namespace krnqb::ui {

/// What the import of an options dialog works on, and how its user stops it.
struct ImportTask {
  std::string description;     ///< company, plan and period: the status line below the controls
  std::function<void()> stop;  ///< called once, when the user presses Cancel while the import runs
};

}  // namespace krnqb::ui
