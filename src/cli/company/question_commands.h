#pragma once

#include "cli/commands.h"
#include "cli/console/streams.h"

namespace krnqb::cli {

/// Prints a request document byte for byte, without a line end of its own.
ExitCode Run(const RequestOptions& options, const Console& console);

/// Prints whether a company answers a qbXML version: "yes" with Done, "no" with Failed.
ExitCode Run(const SupportsOptions& options, const Console& console);

/// Lists the plan tables that an import for a product may change, id and title.
ExitCode Run(const TablesOptions& options, const Console& console);

}  // namespace krnqb::cli
