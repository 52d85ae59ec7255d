#pragma once

#include <optional>
#include <string>

namespace krnqb::cli {

/// Returns the value of an environment variable of the process in UTF-8, or nothing if it is unset.
std::optional<std::string> EnvironmentVariable(const std::string& name);

/// The environment variable with the folder below which programs keep a user's settings, and their folder
/// there.
struct SettingsFolder {
  std::string variable;
  std::string below;   ///< empty if the variable's folder itself is meant
  std::string spoken;  ///< both, as the user writes them
};
SettingsFolder FolderOfSettings();

}  // namespace krnqb::cli
