#include "com/objects/live_objects.h"

#include <atomic>

namespace krnqb::com {
namespace {

// The one thing that belongs to the library as a whole: how much of it is in use, on whatever thread.
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
