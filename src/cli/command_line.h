#pragma once

#include <span>
#include <string>

#include "cli/commands.h"

namespace krnqb::cli {

/// Reads a command line, without the program's own name. Throws Failure with WrongUsage for one that is none.
Command ParseCommandLine(std::span<const std::string> arguments);

}  // namespace krnqb::cli
