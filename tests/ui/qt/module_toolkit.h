#pragma once

#include "build_paths.h"
#include "cli/dialog/module.h"
#include "cli/workplace.h"

namespace krnqb::ui::qt::tests {

/// Returns the toolkit of the module that krnqb loads.
inline std::shared_ptr<Toolkit> ModuleToolkit() {
  return cli::LoadToolkit(krnqb::tests::BuiltDialogModule());
}

/// Runs the command line with that toolkit.
inline cli::tests::ProgramRun RunWithModule(const std::vector<std::string>& arguments) {
  return cli::tests::RunProgram(
      arguments,
      {.clock = cli::tests::JanuaryClock(), .errorIsTerminal = false, .dialogToolkit = ModuleToolkit});
}

}  // namespace krnqb::ui::qt::tests
