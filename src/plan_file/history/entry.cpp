#include "plan_file/history/entry.h"

#include <fmt/format.h>

namespace krnqb::plan_file {

std::string MomentText(const LocalDateTime& moment) {
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", moment.year, moment.month, moment.day,
                     moment.hour, moment.minute, moment.second);
}

}  // namespace krnqb::plan_file
