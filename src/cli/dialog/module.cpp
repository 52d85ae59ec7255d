#include "cli/dialog/module.h"

#include <fmt/format.h>

#include "cli/console/failure.h"
#include "cli/console/version.h"
#include "files/module.h"
#include "ui/toolkit_module.h"

namespace krnqb::cli {
namespace {

Failure NoDialogs(std::string_view why, std::string_view whatToDo) {
  return CommandFailure("showing the dialog failed", why, whatToDo);
}

std::string InstallThisVersion() {
  return fmt::format("install version {} of the package krnqb-dialogs", ProgramVersion());
}

ui::MakeToolkitFunction& Load(const std::filesystem::path& module) {
  std::error_code ignored;
  if (std::filesystem::status(module, ignored).type() == std::filesystem::file_type::not_found) {
    throw NoDialogs(fmt::format("the dialogs are not installed: {} is missing", module.string()),
                    "install the package krnqb-dialogs, or build krnqb with Qt 6");
  }
  try {
    return *reinterpret_cast<ui::MakeToolkitFunction*>(files::FunctionOfModule(module, ui::makeToolkitName));
  } catch (const Error& failure) {
    throw NoDialogs(fmt::format("the dialogs cannot be loaded: {}", failure.Description()),
                    InstallThisVersion());
  }
}

}  // namespace

std::filesystem::path DialogModule() {
  try {
    return files::ModulePath(KRNQB_DIALOG_MODULE);
  } catch (const Error& failure) {
    throw NoDialogs(failure.Description(), "mount /proc");
  }
}

std::shared_ptr<ui::Toolkit> LoadToolkit(const std::filesystem::path& module) {
  ui::MakeToolkitFunction& makeToolkit = Load(module);
  const std::string ownVersion(ProgramVersion());
  ui::MadeToolkit made;
  const std::string_view version = makeToolkit(ownVersion.c_str(), &made);
  if (version != ownVersion) {
    throw NoDialogs(
        fmt::format("{} is of version {}, this krnqb is of version {}", module.string(), version, ownVersion),
        InstallThisVersion());
  }
  if (made.failure) std::rethrow_exception(made.failure);
  return made.toolkit;
}

}  // namespace krnqb::cli
