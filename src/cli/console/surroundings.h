#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "krnqb/outside_world.h"
#include "ui/toolkit.h"

namespace krnqb::cli {

/// What a run of the program has around it beside its arguments and streams.
struct Surroundings {
  std::shared_ptr<Clock> clock;  ///< null: the system's
  bool errorIsTerminal = false;  ///< whether a progress bar can be drawn
  /// Makes what shows dialogs, and throws Error when there is no display; null where none is built in.
  std::function<std::shared_ptr<ui::Toolkit>()> dialogToolkit = {};
  /// The value of an environment variable, or nothing; null: the process's own.
  std::function<std::optional<std::string>(const std::string& name)> environment = {};
};

}  // namespace krnqb::cli
