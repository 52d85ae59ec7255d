#pragma once

#include <chrono>
#include <functional>

#include "cli/console/failure.h"
#include "cli/system/end_requests.h"

namespace krnqb::cli {

/// Remembers an interrupt (SIGINT, SIGTERM or SIGHUP; on Windows see `EndRequests`) instead of letting it end
/// the process, so that the work can stop where nothing is half done. After that, a SIGINT or SIGTERM ends
/// the process at once; a further SIGHUP does not, since a terminal that closes may send several. Signals
/// that are already ignored, as in background jobs, stay ignored.
///
/// Once the result is being written, interrupts have no effect until the process ends: an exit status that
/// reports an interrupt means that nothing was written. Otherwise the destructor restores what the signals
/// did before. One watch at a time.
///
/// A watch can also leave the signals as they are, for a user who starts and ends the work in a dialog. Then
/// they only have no effect from the point of no return until the watch is destroyed, and what interrupts the
/// work is the dialog, by `RequestInterruption`.
class InterruptWatch {
 public:
  enum class Interrupts { Remembered, LeftAsTheyAre };

  explicit InterruptWatch(Interrupts interrupts = Interrupts::Remembered);
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  /// Returns whether an interrupt has arrived.
  bool Requested() const noexcept;

  /// Calls `listen` before it is asked whether to stop, at most 20 times a second, so that a dialog can
  /// notice its Cancel button.
  void ListenThrough(std::function<void()> listen);

  /// Listens, then returns whether an interrupt has arrived.
  bool ListenedAndRequested() const;

  /// Listens, then throws Error if an interrupt has arrived.
  void StopWhenRequested() const;

  /// Call just before writing. Throws Error if an interrupt has arrived; any later interrupt has no effect.
  void PassPointOfNoReturn();

  /// Returns the failure of a command that the user has interrupted. Its exit code is 128 and the number of
  /// the signal.
  Failure Interruption(std::string_view whatFailed, std::string_view whatToDo) const;

 private:
  void Listen() const;

  EndRequests requests_;
  const bool remembers_;
  std::function<void()> listen_;
  mutable std::chrono::steady_clock::time_point listenAgain_;
  bool pastPointOfNoReturn_ = false;
};

/// Returns whether an interrupt has arrived at the latest watch.
bool InterruptRequested() noexcept;

}  // namespace krnqb::cli
