#pragma once

namespace krnqb::com {

/// Counts its owner among what keeps the library loaded, from its making to its end.
class Counted {
 public:
  Counted() noexcept;
  Counted(const Counted&) noexcept : Counted() {}
  Counted& operator=(const Counted&) noexcept = default;
  ~Counted();
};

/// A host's request to keep the library loaded, or its end.
void LockLibrary(bool lock) noexcept;

/// Whether nothing of the library is in use any more.
bool IsLibraryUnused() noexcept;

}  // namespace krnqb::com
