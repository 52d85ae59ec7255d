#include "support/system_registry.h"

namespace krnqb {

std::shared_ptr<Registry> SystemRegistry() {
  return nullptr;
}

}  // namespace krnqb
