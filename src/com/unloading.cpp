// Releases what would outlive the DLL when a host unloads it: a host may load and unload it any number of
// times. The compiler's libraries are linked into the DLL and rely on the process to end with them, so this
// file ends them: the exceptions' memory reserve, the thread library's data of the unloading thread, and
// thread-local storage slots, of which a process has only about a thousand. To know the slots, the linker
// redirects TlsAlloc and TlsFree here.
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <utility>

#include "support/windows/own_module.h"
#include "xml/library.h"

#ifdef _WIN64
#define KRNQB_WRAPPED_ALLOC "__wrap___imp_TlsAlloc"
#define KRNQB_REAL_ALLOC "__real___imp_TlsAlloc"
#define KRNQB_WRAPPED_FREE "__wrap___imp_TlsFree"
#define KRNQB_REAL_FREE "__real___imp_TlsFree"
#else
#define KRNQB_WRAPPED_ALLOC "___wrap__imp__TlsAlloc@0"
#define KRNQB_REAL_ALLOC "___real__imp__TlsAlloc@0"
#define KRNQB_WRAPPED_FREE "___wrap__imp__TlsFree@4"
#define KRNQB_REAL_FREE "___real__imp__TlsFree@4"
#endif

namespace __gnu_cxx {
// The C++ library's function for freeing what it keeps to the end of a program: its memory reserve for
// exceptions.
void __freeres();
}  // namespace __gnu_cxx

namespace {

using TakeSlot = DWORD(WINAPI*)();
using FreeSlot = BOOL(WINAPI*)(DWORD);

std::array<DWORD, 16> takenSlots{};
std::size_t takenCount = 0;
bool doesProcessEnd = false;

DWORD WINAPI TakeRecordedSlot();
BOOL WINAPI FreeRecordedSlot(DWORD slot);

}  // namespace

extern "C" {
extern const TakeSlot realTlsAlloc __asm__(KRNQB_REAL_ALLOC);
extern const TakeSlot wrappedTlsAlloc __asm__(KRNQB_WRAPPED_ALLOC);
const TakeSlot wrappedTlsAlloc = TakeRecordedSlot;
extern const FreeSlot realTlsFree __asm__(KRNQB_REAL_FREE);
extern const FreeSlot wrappedTlsFree __asm__(KRNQB_WRAPPED_FREE);
const FreeSlot wrappedTlsFree = FreeRecordedSlot;

// The functions that the system calls in this DLL when a thread starts or ends.
extern const IMAGE_TLS_DIRECTORY _tls_used;
// The thread library's table of destructors.
extern void* _pthread_key_dest;
}

namespace {

DWORD WINAPI TakeRecordedSlot() {
  const DWORD slot = realTlsAlloc();
  if (slot != TLS_OUT_OF_INDEXES && takenCount < takenSlots.size()) takenSlots[takenCount++] = slot;
  return slot;
}

BOOL WINAPI FreeRecordedSlot(DWORD slot) {
  auto* const end = takenSlots.begin() + takenCount;
  auto* const found = std::find(takenSlots.begin(), end, slot);
  if (found != end) {
    std::copy(found + 1, end, found);
    --takenCount;
  }
  return realTlsFree(slot);
}

// The thread goes on, but without this DLL: for the DLL it ends. The thread library then keeps its data of
// the thread for the next one, which there will not be; a slot holds their address.
void EndThisThread() {
  std::array<void*, takenSlots.size()> data{};
  std::transform(takenSlots.begin(), takenSlots.begin() + takenCount, data.begin(), TlsGetValue);
  const auto* callback = reinterpret_cast<const PIMAGE_TLS_CALLBACK*>(_tls_used.AddressOfCallBacks);
  for (; *callback != nullptr; ++callback) (*callback)(krnqb::OwnModule(), DLL_THREAD_DETACH, nullptr);
  std::for_each(data.begin(), data.end(), std::free);
}

void ReleaseEverything() {
  if (doesProcessEnd) return;
  krnqb::ReleaseXmlLibrary();
  EndThisThread();
  std::free(std::exchange(_pthread_key_dest, nullptr));
  __gnu_cxx::__freeres();
  for (std::size_t index = 0; index < takenCount; ++index) realTlsFree(takenSlots[index]);
}

// What is registered first runs last, after the destructors of all static objects.
__attribute__((constructor(101))) void ReleaseLast() {
  std::atexit(ReleaseEverything);
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, LPVOID processEnds) {
  if (reason == DLL_THREAD_DETACH) krnqb::ReleaseXmlThread();
  if (reason == DLL_PROCESS_DETACH) doesProcessEnd = processEnds != nullptr;
  return TRUE;
}
