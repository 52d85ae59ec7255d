#pragma once

#include <csignal>

namespace krnqb::cli {

/// Remembers an interrupt (SIGINT) instead of letting it end the process, so that the work can stop where
/// nothing is half done. A second interrupt ends the process as usual. Interrupts that are already ignored,
/// as in background jobs, stay ignored.
///
/// Once the result is being written, or the watch is destroyed, interrupts have no effect until the process
/// ends: an exit status that reports an interrupt means that nothing was written. One watch at a time.
class InterruptWatch {
 public:
  enum class Interrupts { Remembered, LeftAsTheyAre };

  explicit InterruptWatch(Interrupts interrupts = Interrupts::Remembered) noexcept;
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  /// Returns whether an interrupt has arrived.
  bool Requested() const noexcept;

  /// Throws Error if an interrupt has arrived.
  void StopWhenRequested() const;

  /// Call just before writing. Throws Error if an interrupt has arrived; any later interrupt has no effect.
  void PassPointOfNoReturn() const;

 private:
  void DisregardInterrupts() const noexcept;

  bool watching_ = false;
};

}  // namespace krnqb::cli
