#include "cli/exchange/machine_processors.h"

#include "cli/console/failure.h"

namespace krnqb::cli {

std::vector<ProcessorClass> MachineProcessorClasses() {
  throw CommandFailure("opening QuickBooks failed", "QuickBooks runs on Windows",
                       "make a recording there with krnqb record and import it here with --replay");
}

}  // namespace krnqb::cli
