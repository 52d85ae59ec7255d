#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <vector>

#include "running_program.h"

namespace krnqb::cli::tests {

/// A running krnqb whose standard output and standard error are read through pipes. It receives interrupts
/// like a program started from a terminal. The destructor kills it if it is still running.
class ChildProcess {
 public:
  /// Whether the program can write to its standard output, or is blocked at its first write until `Drain`.
  enum class Output { Open, Blocked };

  explicit ChildProcess(const std::vector<std::string>& arguments, Output output = Output::Open);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Returns the next line of its standard output, or the rest of it.
  std::string ReadLine();
  void Signal(int number) const;
  /// Reads its standard output to the end, and returns it.
  std::string Drain();
  /// Closes the reading end of its standard output.
  void CloseOutput();
  /// Waits for it to end. Returns the exit status, or minus the signal that ended it.
  int Wait();
  /// Returns its standard error. Call after `Wait`.
  std::string Errors();

 private:
  pid_t process_ = -1;
  files::FileDescriptor output_;
  files::FileDescriptor errors_;
  std::size_t filling_ = 0;
};

/// Runs a shell command in a folder, with krnqb on the path.
struct ShellRun {
  int code = 0;
  std::string out;
  std::string err;
};

/// Runs a shell command in a folder, with krnqb on its path.
ShellRun RunShell(const std::string& folder, const std::string& command);

}  // namespace krnqb::cli::tests
