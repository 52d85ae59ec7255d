#include "cli/console/interrupt_watch.h"

#include "krnqb/error.h"

namespace krnqb::cli {
namespace {

// A signal handler can reach nothing but a variable of this kind.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
volatile std::sig_atomic_t interruptRequested = 0;

void RememberInterrupt(int /*signal*/) {
  interruptRequested = 1;
}

}  // namespace

InterruptWatch::InterruptWatch(Interrupts interrupts) noexcept {
  interruptRequested = 0;
  sigaction(SIGINT, nullptr, &previous_);
  if (interrupts == Interrupts::LeftAsTheyAre || previous_.sa_handler == SIG_IGN) return;
  struct sigaction remembering {};
  remembering.sa_handler = RememberInterrupt;
  sigemptyset(&remembering.sa_mask);
  // Calls of the system that are under way go on; the second interrupt finds the default again.
  remembering.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  sigaction(SIGINT, &remembering, nullptr);
}

InterruptWatch::~InterruptWatch() {
  sigaction(SIGINT, &previous_, nullptr);
}

// Remembered while a watch lives, so it is the watch that is asked.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
bool InterruptWatch::Requested() const noexcept {
  return interruptRequested != 0;
}

void InterruptWatch::StopWhenRequested() const {
  if (Requested()) throw Error(error_number::unspecified, "interrupted");
}

}  // namespace krnqb::cli
