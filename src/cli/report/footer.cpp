#include "cli/report/footer.h"

#include <fmt/format.h>

#include "cli/console/version.h"
#include "plan_file/history/entry.h"

namespace krnqb::cli {

std::string FooterText(const Surroundings& surroundings) {
  std::string moment = plan_file::MomentText(ClockOf(surroundings)->Now());
  moment.replace(moment.find('T'), 1, ", ");
  return fmt::format("Written by krnqb {} on {}.", ProgramVersion(), moment);
}

}  // namespace krnqb::cli
