#pragma once

namespace krnqb::com {

/// Keeps the DLL loaded for the lifetime of its owner.
class Counted {
 public:
  Counted() noexcept;
  Counted(const Counted&) noexcept : Counted() {}
  Counted& operator=(const Counted&) noexcept = default;
  ~Counted();
};

/// Adds or removes a host's lock that keeps the DLL loaded.
void LockLibrary(bool lock) noexcept;

/// Returns whether the DLL can be unloaded.
bool IsLibraryUnused() noexcept;

}  // namespace krnqb::com
