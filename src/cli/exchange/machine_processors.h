#pragma once

#include <vector>

#include "qbxml/processor_classes.h"

namespace krnqb::cli {

/// Returns the classes of QuickBooks' request processor on this machine, in the order in which they are
/// tried. Throws Failure on a system without QuickBooks.
std::vector<ProcessorClass> MachineProcessorClasses();

}  // namespace krnqb::cli
