#pragma once

#include <string>
#include <vector>

#include "running_program.h"

namespace krnqb::cli::tests {

/// A running krnqb.
class ChildProcess : public krnqb::tests::RunningProgram {
 public:
  explicit ChildProcess(const std::vector<std::string>& arguments, Output output = Output::Open);
};

/// The exit status of a shell command and what it printed.
struct ShellRun {
  int code = 0;
  std::string out;
  std::string err;
};

/// Runs a shell command in a folder, with krnqb on its path.
ShellRun RunShell(const std::string& folder, const std::string& command);

}  // namespace krnqb::cli::tests
