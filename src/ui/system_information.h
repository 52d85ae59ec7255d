#pragma once

#include <memory>
#include <optional>
#include <string>

#include "krnqb/outside_world.h"

namespace krnqb::ui {

class ProgramStarter {
 public:
  virtual ~ProgramStarter() = default;

  /// Starts a program by its full path, in a normal window that gets the focus, and does not wait for it.
  /// Throws Error when it cannot be started.
  virtual void Start(const std::string& path) = 0;
};

/// The machine on which a system-information tool is looked for: none of them is null.
struct SystemInformation {
  std::shared_ptr<Registry> registry;
  std::shared_ptr<FileSystem> files;
  std::shared_ptr<ProgramStarter> programs;
};

/// The full path of the system's information tool, or nothing when the registry names none.
std::optional<std::string> FindSystemInformationTool(const SystemInformation& system);

/// Starts the tool. False when there is none or it cannot be started.
bool StartSysInfo(const SystemInformation& system);

}  // namespace krnqb::ui
