#pragma once

#include <string>

#include "cli/console/surroundings.h"

namespace krnqb::cli {

/// Returns the last line of a page: which program wrote it, and when.
std::string FooterText(const Surroundings& surroundings);

}  // namespace krnqb::cli
