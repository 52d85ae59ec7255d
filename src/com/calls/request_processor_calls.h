#pragma once

#include <memory>

#include "krnqb/request_processor.h"

namespace krnqb::com {

/// Returns a factory for the installed request processor: a new instance per session, released when the
/// session ends.
std::shared_ptr<RequestProcessorFactory> InstalledRequestProcessors();

}  // namespace krnqb::com
