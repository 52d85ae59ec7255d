#pragma once

#include <span>
#include <string>

namespace krnqb::cli {

/// Runs `krnqb` as this process, with its standard streams. `arguments` are in UTF-8 and without the
/// program's name. Returns the exit code of the process.
int RunProcess(std::span<const std::string> arguments);

}  // namespace krnqb::cli
