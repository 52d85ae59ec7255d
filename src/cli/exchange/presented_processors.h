#pragma once

#include <memory>
#include <optional>

#include "krnqb/request_processor.h"
#include "qbxml/exchange_header.h"

namespace krnqb::cli {

/// Returns processors that forward every call to those of `inner`, except that they state the version
/// `presented`. Without one, returns `inner` itself.
std::shared_ptr<RequestProcessorFactory> PresentedProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                             std::optional<ProcessorVersion> presented);

}  // namespace krnqb::cli
