#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "krnqb/error.h"

namespace krnqb {

/// The last failure, which the host can read. The next failure overwrites it; nothing clears it.
struct ErrorPair {
  std::int32_t number = 0;
  std::string description;

  void Set(std::int32_t errorNumber, std::string errorDescription) {
    number = errorNumber;
    description = std::move(errorDescription);
  }
  void Set(const Error& error) { Set(error.Number(), error.Description()); }
};

}  // namespace krnqb
