#pragma once

#include <string_view>

namespace krnqb::cli {

/// Returns the version of this build, such as "1.0.0".
std::string_view ProgramVersion() noexcept;

}  // namespace krnqb::cli
