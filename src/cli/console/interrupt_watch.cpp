#include "cli/console/interrupt_watch.h"

#include "krnqb/error.h"

namespace krnqb::cli {
namespace {

// A signal handler may touch no other kind of variable.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
volatile std::sig_atomic_t interruptRequested = 0;

void RememberInterrupt(int /*signal*/) {
  interruptRequested = 1;
}

void DisregardInterrupt(int /*signal*/) {}

void HandleInterrupts(void (*handler)(int), unsigned flags) noexcept {
  struct sigaction action {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  action.sa_flags = static_cast<int>(flags);
  sigaction(SIGINT, &action, nullptr);
}

}  // namespace

InterruptWatch::InterruptWatch(Interrupts interrupts) noexcept {
  interruptRequested = 0;
  struct sigaction current {};
  sigaction(SIGINT, nullptr, &current);
  watching_ = interrupts == Interrupts::Remembered && current.sa_handler != SIG_IGN;
  // System calls in progress are restarted; the handler is removed by its first call.
  if (watching_) HandleInterrupts(RememberInterrupt, SA_RESTART | SA_RESETHAND);
}

InterruptWatch::~InterruptWatch() {
  DisregardInterrupts();
}

// The handler's variable is shared, but it means nothing without a watch.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
bool InterruptWatch::Requested() const noexcept {
  return interruptRequested != 0;
}

void InterruptWatch::StopWhenRequested() const {
  if (Requested()) throw Error(error_number::unspecified, "interrupted");
}

void InterruptWatch::PassPointOfNoReturn() const {
  DisregardInterrupts();  // first, so that no interrupt slips in between
  StopWhenRequested();
}

void InterruptWatch::DisregardInterrupts() const noexcept {
  if (watching_) HandleInterrupts(DisregardInterrupt, SA_RESTART);
}

}  // namespace krnqb::cli
