#pragma once

#include <memory>

#include "krnqb/outside_world.h"

namespace krnqb::cli {

/// What a run of the program has around it beside its arguments and streams.
struct Surroundings {
  std::shared_ptr<Clock> clock;  ///< null: the system's
  bool errorIsTerminal = false;  ///< whether a progress bar can be drawn
};

}  // namespace krnqb::cli
