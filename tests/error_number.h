#pragma once

#include <cstdint>
#include <functional>

#include "krnqb/error.h"

namespace krnqb::tests {

/// Returns the number of the Error that a statement throws, or 0 if it throws none.
inline std::int32_t NumberThrownBy(const std::function<void()>& statement) {
  try {
    statement();
  } catch (const Error& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace krnqb::tests
