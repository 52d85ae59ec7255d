// The guard value of -fstack-protector, and what happens when a function finds its guard overwritten. The
// compiler's own library asks the cryptography service for the value, which loads further DLLs; code that
// runs while a DLL is being loaded must not do that.
#include <windows.h>

#include <cstdint>

extern "C" {

std::uintptr_t __stack_chk_guard = 0;

// Ends the process without running any of its code: its stack cannot be trusted.
[[noreturn]] void __stack_chk_fail() {
  OutputDebugStringA("KRN6_QB2002: a function wrote past its own variables\n");
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_STACK_BUFFER_OVERRUN));
  __builtin_trap();
}
}

namespace {

// Spreads every bit of `value` over the result.
__attribute__((no_stack_protector)) std::uint64_t Mixed(std::uint64_t value) {
  value = (value ^ (value >> 33U)) * 0xFF51AFD7ED558CCDU;
  value = (value ^ (value >> 33U)) * 0xC4CEB9FE1A85EC53U;
  return value ^ (value >> 33U);
}

// Combines what differs between processes and loads and is hard to guess. The lowest byte is 0, so that an
// overrunning text cannot write the guard back.
__attribute__((constructor(101), no_stack_protector)) void ChooseGuard() {
  LARGE_INTEGER counter{};
  QueryPerformanceCounter(&counter);
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  std::uint64_t value = Mixed(static_cast<std::uint64_t>(counter.QuadPart));
  value = Mixed(value ^ now.dwLowDateTime ^ (std::uint64_t{now.dwHighDateTime} << 32U));
  value = Mixed(value ^ GetCurrentProcessId() ^ (std::uint64_t{GetCurrentThreadId()} << 32U));
  // Addresses of the stack and of the library: both are random.
  value = Mixed(value ^ reinterpret_cast<std::uintptr_t>(&counter));
  value = Mixed(value ^ reinterpret_cast<std::uintptr_t>(&__stack_chk_guard));
  constexpr std::uintptr_t lowestByte = 0xFF;
  __stack_chk_guard = static_cast<std::uintptr_t>(value) & ~lowestByte;
}

}  // namespace
