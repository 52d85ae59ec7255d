#pragma once

#include <memory>
#include <optional>
#include <string>

#include "krnqb/outside_world.h"

namespace krnqb::ui {

class ProgramStarter {
 public:
  virtual ~ProgramStarter() = default;

  /// Starts a program by its full path in a normal, active window, and does not wait for it. Throws Error if
  /// it cannot be started.
  virtual void Start(const std::string& path) = 0;
};

/// Services used to find the system-information tool; none may be null.
struct SystemInformation {
  std::shared_ptr<Registry> registry;
  std::shared_ptr<FileSystem> files;
  std::shared_ptr<ProgramStarter> programs;
};

/// Returns the full path of the system-information tool, or nothing if the registry names none.
std::optional<std::string> FindSystemInformationTool(const SystemInformation& system);

/// Starts the tool; returns false if it is missing or cannot be started.
bool StartSysInfo(const SystemInformation& system);

}  // namespace krnqb::ui
