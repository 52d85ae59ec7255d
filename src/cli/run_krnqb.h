#pragma once

#include <ostream>
#include <span>
#include <string>

#include "cli/console/surroundings.h"

namespace krnqb::cli {

/// Runs the command that `arguments` (without the program name) ask for. Prints results on `out` and errors
/// on `err`. Returns the exit code; never throws.
int RunKrnqb(std::span<const std::string> arguments, std::ostream& out, std::ostream& err,
             const Surroundings& surroundings) noexcept;

}  // namespace krnqb::cli
