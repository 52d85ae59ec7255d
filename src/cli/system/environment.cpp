#include "cli/system/environment.h"

#include <cstdlib>

namespace krnqb::cli {

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const char* value = std::getenv(name.c_str());  // NOLINT(concurrency-mt-unsafe): there is one thread
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

SettingsFolder FolderOfSettings() {
  return {.variable = "HOME", .below = ".config", .spoken = "~/.config"};
}

}  // namespace krnqb::cli
