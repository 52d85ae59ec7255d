#include "cli/dialog/module.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include "cli/console/failure.h"
#include "cli/console/version.h"
#include "ui/toolkit_module.h"

namespace krnqb::cli {
namespace {

Failure NoDialogs(std::string_view why, std::string_view whatToDo) {
  return CommandFailure("showing the dialog failed", why, whatToDo);
}

std::string InstallThisVersion() {
  return fmt::format("install version {} of the package krnqb-dialogs", ProgramVersion());
}

// Call it right after a function of the loader failed.
Failure NotLoadable() {
  const char* reason = ::dlerror();
  return NoDialogs(
      fmt::format("the dialogs cannot be loaded: {}", reason != nullptr ? reason : "unknown reason"),
      InstallThisVersion());
}

ui::MakeToolkitFunction& Load(const std::filesystem::path& module) {
  std::error_code ignored;
  if (std::filesystem::status(module, ignored).type() == std::filesystem::file_type::not_found) {
    throw NoDialogs(fmt::format("the dialogs are not installed: {} is missing", module.string()),
                    "install the package krnqb-dialogs, or build krnqb with Qt 6");
  }
  void* library = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw NotLoadable();
  void* function = ::dlsym(library, ui::makeToolkitName);
  if (function == nullptr) throw NotLoadable();
  return *reinterpret_cast<ui::MakeToolkitFunction*>(function);
}

}  // namespace

std::filesystem::path DialogModule() {
  std::error_code failure;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failure);
  if (failure) {
    throw NoDialogs(fmt::format("/proc/self/exe cannot be read: {}", failure.message()), "mount /proc");
  }
  return (program.parent_path() / KRNQB_DIALOG_MODULE).lexically_normal();
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
