#pragma once

#include <string_view>

namespace krnqb::ui {

std::string_view ApplicationTitle() noexcept;

/// Returns major, minor and revision number of the build, such as "1.0.0".
std::string_view ApplicationVersion() noexcept;

}  // namespace krnqb::ui
