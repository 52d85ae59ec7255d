#pragma once

#include <fmt/format.h>

#include <string_view>
#include <utility>

#include "cli/console/failure.h"
#include "cli/console/interrupt_watch.h"

namespace krnqb::cli {

/// Runs a command that heeds interrupts through the watch that it is passed, and returns its end. Whatever it
/// throws after an interrupt is reported as the interruption: "krnqb: WHAT interrupted: REASON; STATE".
template <typename Body>
auto RunInterruptibly(std::string_view what, std::string_view state, Body&& body) {
  const InterruptWatch interrupts;
  try {
    return std::forward<Body>(body)(interrupts);
  } catch (...) {
    if (interrupts.Requested()) throw interrupts.Interruption(fmt::format("{} interrupted", what), state);
    throw;
  }
}

}  // namespace krnqb::cli
