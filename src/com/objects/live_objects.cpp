#include "com/objects/live_objects.h"

#include <atomic>

namespace krnqb::com {
namespace {

// The DLL's only global state: the number of objects and locks in use, on any thread.
std::atomic<long> inUse{0};

}  // namespace

Counted::Counted() noexcept {
  ++inUse;
}
Counted::~Counted() {
  --inUse;
}

void LockLibrary(bool lock) noexcept {
  if (lock)
    ++inUse;
  else
    --inUse;
}

bool IsLibraryUnused() noexcept {
  return inUse == 0;
}

}  // namespace krnqb::com
