#pragma once

#include <cstdint>
#include <memory>

#include "krnqb/request_processor.h"

namespace krnqb::com {

/// Returns a new processor of the class that QuickBooks 2002 and 2003 install; null, with the HRESULT in
/// `result`, if it cannot be created.
std::unique_ptr<RequestProcessor> CreateInstalledProcessor(std::int32_t& result);

/// Returns a factory for the installed request processor: a new instance per session, released when the
/// session ends.
std::shared_ptr<RequestProcessorFactory> InstalledRequestProcessors();

}  // namespace krnqb::com
