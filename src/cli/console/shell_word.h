#pragma once

#include <string>
#include <string_view>

namespace krnqb::cli {

/// Returns the text as one word of a shell's command line, in quotes if it needs them.
std::string ShellWord(std::string_view text);

}  // namespace krnqb::cli
