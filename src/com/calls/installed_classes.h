#pragma once

#include <vector>

#include "qbxml/processor_classes.h"

namespace krnqb::com {

/// Returns the classes of QuickBooks' request processor for a program of its own, in the order in which they
/// are tried: the one that the component uses, early bound, then QBXMLRP2.RequestProcessor, by name. Creating
/// a processor initialises COM for this thread, until the processor is destroyed.
std::vector<ProcessorClass> InstalledProcessorClasses();

}  // namespace krnqb::com
