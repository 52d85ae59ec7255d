#include "cli/plan/version_text.h"

#include <fmt/format.h>

#include <algorithm>

namespace krnqb::cli {

std::string ShortMoment(std::string_view when) {
  constexpr std::size_t untilMinutes = 16;
  std::string moment(when.substr(0, untilMinutes));
  std::ranges::replace(moment, 'T', ' ');
  return moment;
}

std::string VersionName(const plan_file::HistoryEntry& entry) {
  return fmt::format("version {} (before the {} of {})", entry.number, entry.import ? "import" : "undo",
                     ShortMoment(entry.when));
}

}  // namespace krnqb::cli
