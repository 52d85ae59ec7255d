#include "support/windows/own_module.h"

namespace krnqb {

HMODULE OwnModule() noexcept {
  HMODULE module = nullptr;
  constexpr DWORD flags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  // Any address inside the module identifies it.
  static const char inside = 0;
  GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&inside), &module);
  return module;
}

}  // namespace krnqb
