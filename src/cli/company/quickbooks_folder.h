#pragma once

#include <optional>
#include <string>

#include "cli/console/surroundings.h"

namespace krnqb::cli {

/// Returns the absolute path of the QuickBooks program's folder: the one that was typed, else the environment
/// variable KRNQB_QUICKBOOKS_FOLDER, else "quickbooks-folder" in krnqb/config.ini in the folder for settings,
/// else the folder that Windows has in its registry. Throws Failure if none is known, or if the configuration
/// file is invalid, cannot be read, or holds 64 KiB or more.
std::string QuickBooksFolderPath(const std::optional<std::string>& typed, const Surroundings& surroundings);

}  // namespace krnqb::cli
