#include "cli/exchange/machine_processors.h"
#include "com/calls/installed_classes.h"

namespace krnqb::cli {

std::vector<ProcessorClass> MachineProcessorClasses() {
  return com::InstalledProcessorClasses();
}

}  // namespace krnqb::cli
