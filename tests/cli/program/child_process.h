#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

#include "files/descriptor.h"

namespace krnqb::cli::tests {

/// A running krnqb whose standard output and standard error come back through pipes. Interrupts reach it as
/// they reach a program that a person started. One that still runs at the end of its object's life is killed.
class ChildProcess {
 public:
  explicit ChildProcess(const std::vector<std::string>& arguments);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// The next line of its standard output, or what there was before its end.
  std::string ReadLine();
  void Signal(int number) const;
  /// Closes our end of its standard output.
  void CloseOutput();
  /// Waits for the end and gives the exit status, or minus the signal that ended it.
  int Wait();
  /// Everything of its standard error, after its end.
  std::string Errors();

 private:
  pid_t process_ = -1;
  files::FileDescriptor output_;
  files::FileDescriptor errors_;
};

/// Runs a shell command in a folder, krnqb being on its path, and gives its exit status and what it printed.
struct ShellRun {
  int code = 0;
  std::string out;
  std::string err;
};
ShellRun RunShell(const std::string& folder, const std::string& command);

}  // namespace krnqb::cli::tests
