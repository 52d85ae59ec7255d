#pragma once

#include <string>

#include "cli/doctor/checkup.h"

namespace krnqb::cli {

/// Returns a line for each check, one for each reason to leave checks out, and one that counts the verdicts.
std::string CheckupText(const Checkup& checkup);

/// Returns one JSON object, indented, without a line end.
std::string CheckupJson(const Checkup& checkup);

}  // namespace krnqb::cli
