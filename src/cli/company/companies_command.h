#pragma once

#include <optional>
#include <string>

#include "cli/console/streams.h"
#include "cli/console/surroundings.h"

namespace krnqb::cli {

/// `krnqb companies` as it was typed.
struct CompaniesOptions {
  std::optional<std::string> quickBooksFolder;
  bool json = false;
};

/// Lists the company files in the folder of the QuickBooks program, one path per line or as JSON. Warns of
/// each file whose path the list cannot represent, and then returns Incomplete.
ExitCode Run(const CompaniesOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
