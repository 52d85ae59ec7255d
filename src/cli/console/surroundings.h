#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "krnqb/outside_world.h"
#include "qbxml/processor_classes.h"
#include "ui/toolkit.h"

namespace krnqb::cli {

/// What a run of the program uses besides its arguments and streams.
struct Surroundings {
  std::shared_ptr<Clock> clock;  ///< null: the system clock
  bool errorIsTerminal = false;  ///< whether a progress bar can be drawn
  /// Creates the toolkit that shows dialogs. Throws Failure if it is not installed and Error if there is no
  /// display. Null if the program was built without dialogs.
  std::function<std::shared_ptr<ui::Toolkit>()> dialogToolkit = {};
  /// Returns the value of an environment variable, or nothing if it is unset. Null: the process's
  /// environment.
  std::function<std::optional<std::string>(const std::string& name)> environment = {};
  /// Returns whether the program that reads the results has ended. Null: it is not known to have ended.
  std::function<bool()> readerHasEnded = {};
  /// Returns how many columns the terminal of standard output has at the moment. Null: 80, as for a file.
  std::function<std::size_t()> outputWidth = {};
  /// Returns the same for standard error.
  std::function<std::size_t()> errorWidth = {};
  /// Returns the time since a fixed moment. Null: the system's steady clock.
  std::function<std::chrono::milliseconds()> stopwatch = {};
  /// Returns the classes of QuickBooks' request processor. Null: those of this machine.
  std::function<std::vector<ProcessorClass>()> processorClasses = {};
};

/// Returns the clock, which is never null.
std::shared_ptr<Clock> ClockOf(const Surroundings& surroundings);

/// Returns the time since a fixed moment.
std::chrono::milliseconds StopwatchTime(const Surroundings& surroundings);

}  // namespace krnqb::cli
