#include "test_processor/call_log.h"

#include <fstream>

namespace krnqb::testing {

void LogCall(const std::filesystem::path& file, std::string_view line) {
  if (file.empty()) return;
  std::ofstream log(file, std::ios::binary | std::ios::app);
  log << line << '\n';
}

}  // namespace krnqb::testing
