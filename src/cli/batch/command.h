#pragma once

#include <optional>
#include <string>

#include "cli/console/command_end.h"
#include "cli/console/streams.h"

namespace krnqb::cli {

/// `krnqb summary` as it was typed.
struct SummaryOptions {
  std::string folder;
  std::optional<std::string> htmlFile;
  std::optional<std::string> csvFile;
  bool json = false;
};

/// Reads the results of many imports in a folder and prints who is done, who is not and why. Writes the page
/// and the CSV file that are asked for; then only one line is printed. Returns Incomplete if an import is not
/// done.
CommandEnd Run(const SummaryOptions& options, const Console& console);

}  // namespace krnqb::cli
