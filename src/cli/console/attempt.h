#pragma once

#include <string_view>
#include <utility>

#include "cli/console/failure.h"
#include "support/error_handling.h"

namespace krnqb::cli {

/// Runs a step and gives its result; what it throws becomes a Failure that says what failed and what to do.
template <typename Step>
auto Attempt(std::string_view whatFailed, std::string_view whatToDo, Step&& step) {
  try {
    return std::forward<Step>(step)();
  } catch (const Failure&) {
    throw;
  } catch (...) {
    throw Failure(ExitCode::Failed, whatFailed, CaughtError(), whatToDo);
  }
}

/// The same for steps whose errors say all of it themselves, as those of plan files do.
template <typename Step>
auto Attempt(Step&& step) {
  try {
    return std::forward<Step>(step)();
  } catch (const Error& error) {
    throw Failure(ExitCode::Failed, error);
  }
}

}  // namespace krnqb::cli
