#pragma once

#include "cli/console/failure.h"

namespace krnqb::cli {

/// How a command ended.
struct CommandEnd {
  // Most commands only print, so that their exit code says it all.
  // NOLINTNEXTLINE(google-explicit-constructor)
  CommandEnd(ExitCode exitCode, bool filesChanged = false) noexcept
      : code(exitCode), changedFiles(filesChanged) {}

  ExitCode code;
  bool changedFiles;  ///< whether a plan or a company was written, so that the command must not be repeated
};

}  // namespace krnqb::cli
