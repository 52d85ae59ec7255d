#pragma once

#include <memory>

#include "cli/console/interrupt_watch.h"
#include "cli/import/omissions.h"
#include "krnqb/request_processor.h"

namespace krnqb::cli {

/// Processors that pass everything on to those of `inner`, keep the requests that these refuse, and refuse
/// everything once the import has been interrupted. Watch and omissions outlive the processors.
std::shared_ptr<RequestProcessorFactory> WatchedProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                           const InterruptWatch& interrupts,
                                                           Omissions& omissions);

}  // namespace krnqb::cli
