#pragma once

namespace krnqb::faults {

/// Whose allocations fail: those of C++, of the XML library or of the database.
enum class Allocator { New, Xml, Database };

/// How often an allocation fails: once, or it and every later one.
enum class Shortage { Passing, Lasting };

/// Makes an allocation fail while it lives. Allocations are counted from 1; 0 fails none. This program
/// replaces `operator new` and the allocation functions of both libraries for that.
class FailingMemory {
 public:
  explicit FailingMemory(Allocator allocator, long failing = 0,
                         Shortage shortage = Shortage::Passing) noexcept;
  ~FailingMemory() { Stop(); }
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  /// Lets every allocation succeed again.
  void Stop() noexcept;
  /// Returns the number of allocations between creation and `Stop`.
  static long Counted() noexcept;
  /// Returns whether an allocation failed.
  static bool Struck() noexcept;
};

/// Returns the number of blocks that `operator new` and the XML library have allocated and not released.
long BlocksInUse() noexcept;

/// Returns the number of bytes that the database library uses.
long long DatabaseBytesInUse() noexcept;

}  // namespace krnqb::faults
