#pragma once

#include "cli/commands.h"
#include "cli/console/streams.h"

namespace krnqb::cli {

ExitCode Run(const NewCompanyOptions& options, const Console& console);

/// Loads documents one after the other, each whole or not at all. When one fails, those before it stay
/// loaded, which the message tells: Failed when none was loaded, else Incomplete.
ExitCode Run(const LoadCompanyOptions& options, const Console& console);

/// Makes up a company; counts its records and lines and tells the file's size.
ExitCode Run(const GenerateCompanyOptions& options, const Console& console);

ExitCode Run(const CompanyInfoOptions& options, const Console& console);

}  // namespace krnqb::cli
