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

  void Set(const Error& error) {
    number = error.Number();
    description = error.Description();
    kind = error.Kind();
  }
};

}  // namespace krnqb
