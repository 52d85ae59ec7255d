#pragma once

#include <memory>

#include "cli/console/surroundings.h"
#include "krnqb/request_processor.h"
#include "qbxml/exchange_header.h"

namespace krnqb::cli {

/// The QuickBooks of this machine.
struct OpenedQuickBooks {
  std::shared_ptr<RequestProcessorFactory> processors;
  ProcessorVersion version;  ///< its processor's; 0.0 if that is known only in a session
};

/// Starts QuickBooks' request processor, without opening a connection. Throws Failure if no class of it can
/// be created: the line names every class with the reason and, if only a program of the other width could
/// create one, that program.
OpenedQuickBooks OpenQuickBooks(const Surroundings& surroundings);

}  // namespace krnqb::cli
