#pragma once

#include <fmt/format.h>

#include <string_view>
#include <utility>

#include "cli/console/failure.h"
#include "cli/console/interrupt_watch.h"

namespace krnqb::cli {

/// Returns the failure of a command that was interrupted: "krnqb: WHAT interrupted: stopped on request;
/// STATE".
inline Failure Interrupted(std::string_view what, std::string_view state) {
  return {ExitCode::Interrupted, fmt::format("{} interrupted", what),
          Error(error_number::unspecified, "stopped on request"), state};
}

/// Runs a command that heeds interrupts through the watch that it is passed. Whatever it throws after an
/// interrupt is reported as the interruption.
template <typename Body>
ExitCode RunInterruptibly(std::string_view what, std::string_view state, Body&& body) {
  const InterruptWatch interrupts;
  try {
    return std::forward<Body>(body)(interrupts);
  } catch (...) {
    if (interrupts.Requested()) throw Interrupted(what, state);
    throw;
  }
}

}  // namespace krnqb::cli
