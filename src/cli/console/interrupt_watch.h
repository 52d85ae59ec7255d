#pragma once

#include <csignal>

namespace krnqb::cli {

/// While it lives, an interrupt (SIGINT) no longer ends the process but is remembered, for the work to stop
/// where nothing is half done. A second interrupt ends the process as usual. Where interrupts are ignored
/// already, as in background jobs, they stay ignored. One at a time.
class InterruptWatch {
 public:
  enum class Interrupts { Remembered, LeftAsTheyAre };

  explicit InterruptWatch(Interrupts interrupts = Interrupts::Remembered) noexcept;
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  bool Requested() const noexcept;
  /// Throws Error when an interrupt has come; the work that it ends writes nothing.
  void StopWhenRequested() const;

 private:
  struct sigaction previous_ {};
};

}  // namespace krnqb::cli
