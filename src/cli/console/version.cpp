#include "cli/console/version.h"

namespace krnqb::cli {

std::string_view ProgramVersion() noexcept {
  return KRNQB_PROGRAM_VERSION;
}

}  // namespace krnqb::cli
