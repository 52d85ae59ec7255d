#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <vector>

#include "files/descriptor.h"

namespace krnqb::tests {

/// Converts a status of waitpid to the exit status, or to minus the signal that ended the process.
int ExitStatus(int waitStatus) noexcept;

/// A program running in its own process, with its standard output and standard error connected to pipes. It
/// does not inherit that SIGINT, SIGTERM or SIGHUP is ignored, as background jobs of a shell would. The
/// destructor kills it if it is still running.
class RunningProgram {
 public:
  /// Whether the program can write to its standard output, or is blocked at its first write until `Drain`.
  enum class Output { Open, Blocked };

  /// Throws std::runtime_error if the program cannot be started.
  RunningProgram(const std::string& program, const std::vector<std::string>& arguments,
                 Output output = Output::Open);
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  /// Waits for and returns the next line of standard output, or what remains at its end.
  std::string ReadLine();
  /// Sends a signal, such as SIGKILL.
  void Signal(int number) const;
  /// Reads standard output to its end and returns it.
  std::string Drain();
  /// Closes the reading end of standard output.
  void CloseOutput();
  /// Waits until the process ends. Returns its exit status, or minus the signal that ended it.
  int Wait();
  /// Returns everything written to standard error, once the process has ended.
  std::string Errors();

 private:
  pid_t process_ = -1;
  files::FileDescriptor output_;
  files::FileDescriptor errors_;
  std::size_t filling_ = 0;
};

}  // namespace krnqb::tests
