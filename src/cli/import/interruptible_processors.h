#pragma once

#include <memory>

#include "cli/console/interrupt_watch.h"
#include "krnqb/request_processor.h"

namespace krnqb::cli {

/// Returns processors that pass everything on to those of `inner` until the import is interrupted, and refuse
/// connections and requests from then on. `interrupts` outlives the processors.
std::shared_ptr<RequestProcessorFactory> InterruptibleProcessors(
    std::shared_ptr<RequestProcessorFactory> inner, const InterruptWatch& interrupts);

}  // namespace krnqb::cli
