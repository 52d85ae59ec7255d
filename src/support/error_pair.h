#pragma once

#include <cstdint>
#include <string>

#include "krnqb/error.h"

namespace krnqb {

/// The last failure with its kind, which the host can read. The next failure overwrites it; nothing clears
/// it.
struct ErrorPair {
  std::int32_t number = 0;
  std::string description;
  ErrorKind kind = ErrorKind::Other;

  /// Stores Error 7 instead if there is no memory for the description.
  void Set(const Error& error) noexcept {
    try {
      description = error.Description();
      number = error.Number();
      kind = error.Kind();
    } catch (...) {
      description = "Out of memory";  // fits where the last description was
      number = error_number::outOfMemory;
      kind = ErrorKind::OutOfMemory;
    }
  }
};

}  // namespace krnqb
