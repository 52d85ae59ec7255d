#pragma once

#include <optional>
#include <string>

#include "cli/console/surroundings.h"

namespace krnqb::cli {

/// The folder of the QuickBooks program, as an absolute path: the one that was typed, else that of the
/// environment variable KRNQB_QUICKBOOKS_FOLDER, else "quickbooks-folder" in ~/.config/krnqb/config.ini.
/// Throws Failure when none of them names one, and for a configuration file that cannot be read.
std::string QuickBooksFolderPath(const std::optional<std::string>& typed, const Surroundings& surroundings);

}  // namespace krnqb::cli
