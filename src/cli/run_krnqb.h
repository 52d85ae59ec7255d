#pragma once

#include <ostream>
#include <span>
#include <string>

#include "cli/console/surroundings.h"

namespace krnqb::cli {

/// Runs the program once: does what `arguments` (without the program's name) ask for, prints results on `out`
/// and errors on `err`, and gives the exit code. Never throws.
int RunKrnqb(std::span<const std::string> arguments, std::ostream& out, std::ostream& err,
             const Surroundings& surroundings) noexcept;

}  // namespace krnqb::cli
