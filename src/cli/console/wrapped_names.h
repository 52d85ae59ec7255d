#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace krnqb::cli {

/// `lead` and the names behind it, separated by commas, in lines of at most 79 characters (a longer name has
/// a line of its own); lines after the first are indented. Ends with a line end.
std::string WrappedNames(std::string_view lead, const std::vector<std::string>& names);

}  // namespace krnqb::cli
