#include "cli/console/streams.h"

#include <fmt/format.h>

#include "cli/console/text_table.h"

namespace krnqb::cli {

void PrintError(const Console& console, std::string_view line) {
  console.err << OneLine(line) << '\n';
}

void Warn(const Console& console, std::string_view text) {
  PrintError(console, fmt::format("krnqb: warning: {}", text));
}

}  // namespace krnqb::cli
