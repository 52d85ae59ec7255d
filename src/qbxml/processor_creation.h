#pragma once

#include <cstdint>

#include "krnqb/error.h"

namespace krnqb {

/// Returns the error of a request processor that could not be created: Error 429 if `result`, the HRESULT of
/// the creation, says that its class or its program is missing; otherwise `error`, which describes the
/// result.
Error CreationError(const Error& error, std::int32_t result);

}  // namespace krnqb
