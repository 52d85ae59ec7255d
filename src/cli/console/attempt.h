#pragma once

#include <string_view>
#include <utility>

#include "cli/console/failure.h"
#include "support/error_handling.h"

namespace krnqb::cli {

/// Runs a step and returns its result. Turns whatever it throws into a Failure that says what failed and what
/// to do; a Failure passes through.
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

/// Does the same for steps whose errors already say what failed and what to do, as those of plan files do.
template <typename Step>
auto Attempt(Step&& step) {
  try {
    return std::forward<Step>(step)();
  } catch (const Error& error) {
    throw Failure(ExitCode::Failed, error);
  }
}

}  // namespace krnqb::cli
