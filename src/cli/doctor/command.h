#pragma once

#include <string>

#include "cli/console/command_end.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/exchange/company_choice.h"

namespace krnqb::cli {

/// `krnqb doctor` as it was typed.
struct DoctorOptions : CompanyChoice {
  std::string planFile;
  bool json = false;
};

/// Checks everything that an import of the company into the plan needs, and writes nothing. Prints a line for
/// each check. Returns Failed if an import would fail, Incomplete if there are only warnings.
ExitCode Run(const DoctorOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
