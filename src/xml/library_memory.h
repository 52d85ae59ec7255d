#pragma once

namespace krnqb {

/// Notices that the XML library ran out of memory since this was created. Many of its functions go on without
/// what they could not allocate and say so only in the library's last error.
class LibraryMemory {
 public:
  LibraryMemory() noexcept;

  bool RanOut() const noexcept;
  /// Throws std::bad_alloc if the library ran out of memory.
  void Check() const;
};

}  // namespace krnqb
