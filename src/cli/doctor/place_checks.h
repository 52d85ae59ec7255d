#pragma once

#include <string>

#include "cli/doctor/checkup.h"

namespace krnqb::cli {

/// Checks the place of a plan: whether its folder takes the files that an import writes, no other import or
/// undo changes it, and its history is whole. Writes nothing.
void CheckPlace(const std::string& planFile, Checkup& checkup);

}  // namespace krnqb::cli
