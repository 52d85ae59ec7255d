#pragma once

#include <memory>

#include "krnqb/request_processor.h"

namespace krnqb::com {

/// QuickBooks' own request processor, made anew for each session and released with it.
std::shared_ptr<RequestProcessorFactory> InstalledRequestProcessors();

}  // namespace krnqb::com
