#pragma once

#include <string_view>

namespace krnqb::cli {

/// The program's version as its build names it, such as "1.0.0".
std::string_view ProgramVersion() noexcept;

}  // namespace krnqb::cli
