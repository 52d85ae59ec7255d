#pragma once

#include <string>
#include <string_view>

#include "krnqb/error.h"

namespace krnqb::cli {

/// The program's exit status.
enum class ExitCode : int {
  Done = 0,
  Failed = 1,      ///< nothing was written
  WrongUsage = 2,  ///< nothing was attempted
  Incomplete = 3,  ///< done, but something is missing
  Differs = 4,     ///< done: the plan differs from the books
  // Ended from outside: 128 and the number of the signal. Nothing was written.
  HungUp = 129,        ///< SIGHUP
  Interrupted = 130,   ///< SIGINT
  OutputClosed = 141,  ///< SIGPIPE: the program that read the output has ended
  Terminated = 143     ///< SIGTERM
};

/// Returns whether a signal ended the command.
bool IsInterruption(ExitCode code) noexcept;

/// A command that failed. Number and description hold the reason; the line is printed on standard error.
class Failure : public Error {
 public:
  /// Builds the line "krnqb: WHAT FAILED: WHY; WHAT TO DO". The arguments end without punctuation, except
  /// that `why` may be a sentence: its full stop is removed.
  Failure(ExitCode code, std::string_view whatFailed, const Error& why, std::string_view whatToDo);

  /// Takes the line from an error whose description already says what failed, why and what to do.
  Failure(ExitCode code, const Error& error);

  ExitCode Code() const noexcept { return code_; }
  /// Returns the line without a line end.
  const std::string& Line() const noexcept { return line_; }
  /// Returns the line's last part, what to do.
  const std::string& Remedy() const noexcept { return remedy_; }

 private:
  ExitCode code_;
  std::string line_;
  std::string remedy_;
};

/// Returns a usage error (exit code 2).
Failure WrongUsage(std::string_view why, std::string_view whatToDo);

/// Returns a failure (exit code 1) whose reason has no error number of its own.
Failure CommandFailure(std::string_view whatFailed, std::string_view why, std::string_view whatToDo);

}  // namespace krnqb::cli
