#pragma once

#include <cstddef>
#include <string>

#include "cli/explain/story.h"

namespace krnqb::cli {

/// Returns the lines of a sum as a table for people: date, kind, number, name, account, the amount as it was
/// read and what was added, under a heading for each change of the rule, and at the end the sum. Columns
/// without any text are left out. Names are shortened so that no line is longer than `width` columns, as far
/// as that is possible. Empty without lines.
std::string LineTable(const SumStory& story, std::size_t width, const std::string& indent);

}  // namespace krnqb::cli
