#pragma once

#include <string>

#include "cli/console/command_end.h"
#include "cli/console/streams.h"

namespace krnqb::cli {

/// `krnqb company check` as it was typed.
struct CheckCompanyOptions {
  std::string file;
  bool fix = false;
  bool json = false;
};

/// Checks a company file and prints what is damaged, one finding a line or as JSON; returns Failed if
/// anything is. With `fix`, undoes a load that was interrupted, and adds checksums to a file that has none.
CommandEnd Run(const CheckCompanyOptions& options, const Console& console);

}  // namespace krnqb::cli
