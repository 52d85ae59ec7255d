#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::cli {

/// Returns `lead` and the names, separated by commas, in lines of at most `width` characters; a longer name
/// gets its own line. Lines after the first are indented. Ends with a line end.
std::string WrappedNames(std::string_view lead, const std::vector<std::string>& names,
                         std::size_t width = 79);

}  // namespace krnqb::cli
