#pragma once

#include "cli/commands.h"
#include "cli/console/streams.h"

namespace krnqb::cli {

/// Lists a company's income or expense accounts as a tree and, for a plan of product bri, which expense
/// accounts an import would keep in it.
ExitCode Run(const AccountsOptions& options, const Console& console);

}  // namespace krnqb::cli
