#include "process_use.h"

#include <windows.h>

#include <array>
#include <cstdint>

namespace krnqb::testing {
namespace {

std::size_t AllocatedBytes(HANDLE heap) {
  std::size_t bytes = 0;
  HeapLock(heap);
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry) != FALSE) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
  }
  HeapUnlock(heap);
  return bytes;
}

// Counts the committed pages that are nobody else's.
std::size_t PrivateBytes() {
  std::size_t bytes = 0;
  const char* place = nullptr;
  MEMORY_BASIC_INFORMATION region{};
  while (VirtualQuery(place, &region, sizeof(region)) == sizeof(region)) {
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
    place = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
  }
  return bytes;
}

// Asks for every handle: not every system counts them.
int OpenHandles() {
  constexpr std::uintptr_t last = 0x10000;
  constexpr std::uintptr_t step = 4;
  int open = 0;
  DWORD flags = 0;
  for (std::uintptr_t handle = step; handle < last; handle += step) {
    if (GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != FALSE) ++open;
  }
  return open;
}

}  // namespace

ProcessUse OwnUse() {
  ProcessUse use;
  std::array<HANDLE, 64> heaps{};
  const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  for (DWORD index = 0; index < count && index < heaps.size(); ++index) {
    use.heapBytes += AllocatedBytes(heaps[index]);
  }
  use.privateBytes = PrivateBytes();
  use.handles = OpenHandles();
  return use;
}

}  // namespace krnqb::testing
