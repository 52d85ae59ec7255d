#pragma once

#include <span>
#include <string>

#include "cli/commands.h"

namespace krnqb::cli {

/// Parses a command line, given without the program name. Throws Failure (WrongUsage) if it is invalid.
Command ParseCommandLine(std::span<const std::string> arguments);

}  // namespace krnqb::cli
