// Releases what would outlive the DLL when a host unloads it. A host may load and unload it any number of
// times, but a process has only about a thousand thread-local storage slots, and the compiler's thread
// library takes one and never frees it. The linker therefore redirects TlsAlloc to this file, which records
// the slots.
#include <windows.h>

#include <array>
#include <cstddef>

#include "xml/library.h"

#ifdef _WIN64
#define KRNQB_WRAPPED "__wrap___imp_TlsAlloc"
#define KRNQB_REAL "__real___imp_TlsAlloc"
#else
#define KRNQB_WRAPPED "___wrap__imp__TlsAlloc@0"
#define KRNQB_REAL "___real__imp__TlsAlloc@0"
#endif

namespace {

using TakePlace = DWORD(WINAPI*)();

std::array<DWORD, 16> takenPlaces{};
std::size_t takenCount = 0;

DWORD WINAPI TakeRememberedPlace();

}  // namespace

extern "C" {
extern const TakePlace realTlsAlloc __asm__(KRNQB_REAL);
extern const TakePlace wrappedTlsAlloc __asm__(KRNQB_WRAPPED);
const TakePlace wrappedTlsAlloc = TakeRememberedPlace;
}

namespace {

DWORD WINAPI TakeRememberedPlace() {
  const DWORD place = realTlsAlloc();
  if (place != TLS_OUT_OF_INDEXES && takenCount < takenPlaces.size()) takenPlaces[takenCount++] = place;
  return place;
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, LPVOID processEnds) {
  if (reason != DLL_PROCESS_DETACH || processEnds != nullptr) return TRUE;
  krnqb::ReleaseXmlLibrary();
  for (std::size_t index = 0; index < takenCount; ++index) TlsFree(takenPlaces[index]);
  return TRUE;
}
