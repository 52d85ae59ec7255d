#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <utility>

#include "krnqb/error.h"

namespace krnqb::tests {

/// Returns the Error that an action throws, or nullopt if it throws none.
template <typename Action>
std::optional<Error> ErrorOf(Action&& action) {
  try {
    std::forward<Action>(action)();
  } catch (const Error& error) {
    return error;
  }
  return std::nullopt;
}

/// Returns the Error that an action throws; fails the test if it throws none.
template <typename Action>
Error ThrownError(Action&& action) {
  const std::optional<Error> error = ErrorOf(std::forward<Action>(action));
  if (!error) ADD_FAILURE() << "the action threw no Error";
  return error.value_or(Error(0, ""));
}

/// Returns the number of the Error that an action throws, or 0 if it throws none.
template <typename Action>
std::int32_t NumberThrownBy(Action&& action) {
  const std::optional<Error> error = ErrorOf(std::forward<Action>(action));
  return error ? error->Number() : 0;
}

}  // namespace krnqb::tests
