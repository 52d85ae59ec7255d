#pragma once

#include <memory>

#include "cli/console/interrupt_watch.h"
#include "krnqb/request_processor.h"

namespace krnqb::cli {

/// Returns processors that forward every call to those of `inner` until the import is interrupted; then they
/// refuse connections and requests. `interrupts` must outlive the processors.
std::shared_ptr<RequestProcessorFactory> InterruptibleProcessors(
    std::shared_ptr<RequestProcessorFactory> inner, const InterruptWatch& interrupts);

}  // namespace krnqb::cli
