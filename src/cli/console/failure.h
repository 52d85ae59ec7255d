#pragma once

#include <string>
#include <string_view>

#include "krnqb/error.h"

namespace krnqb::cli {

/// How the program ends.
enum class ExitCode : int {
  Done = 0,
  Failed = 1,      ///< nothing was written
  WrongUsage = 2,  ///< nothing was tried
  Incomplete = 3,  ///< written although something was missing
  Interrupted = 130
};

/// A command that cannot be done. Number and description are the why; the line tells it on standard error.
class Failure : public Error {
 public:
  /// The line "krnqb: what failed: why; what to do". The arguments are words without punctuation at their
  /// ends; the full stop of a why that is a sentence is left out.
  Failure(ExitCode code, std::string_view whatFailed, const Error& why, std::string_view whatToDo);

  /// For an error whose description says all three itself.
  Failure(ExitCode code, const Error& error);

  ExitCode Code() const noexcept { return code_; }
  /// The line, without its line end.
  const std::string& Line() const noexcept { return line_; }

 private:
  ExitCode code_;
  std::string line_;
};

/// A command line that asks for what there is not.
Failure WrongUsage(std::string_view why, std::string_view whatToDo);

/// A command that comes to nothing for a reason that no error number tells.
Failure CommandFailure(std::string_view whatFailed, std::string_view why, std::string_view whatToDo);

}  // namespace krnqb::cli
