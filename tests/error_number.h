#pragma once

#include <cstdint>
#include <functional>

#include "krnqb/error.h"

namespace krnqb::tests {

/// The number of the error that a statement throws; 0 when it throws none.
inline std::int32_t NumberThrownBy(const std::function<void()>& statement) {
  try {
    statement();
  } catch (const Error& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace krnqb::tests
