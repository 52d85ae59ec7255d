#include "cli/console/interrupt_watch.h"

#include "krnqb/error.h"

namespace krnqb::cli {
namespace {

// The first signal that has arrived, or 0. A signal handler may touch no other kind of variable.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
volatile std::sig_atomic_t requestedSignal = 0;

void RememberInterrupt(int signal);

// System calls in progress are restarted. One handler runs after the other, so that the first one decides
// what the second signal does.
void SetHandler(int signal, void (*handler)(int)) noexcept {
  struct sigaction action {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  for (const int watched : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&action.sa_mask, watched);
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
}

void EndAtOnceOn(int signal) noexcept {
  struct sigaction current {};
  sigaction(signal, nullptr, &current);
  if (current.sa_handler == RememberInterrupt) SetHandler(signal, SIG_DFL);
}

void RememberInterrupt(int signal) {
  if (requestedSignal != 0) return;
  requestedSignal = signal;
  EndAtOnceOn(SIGINT);
  EndAtOnceOn(SIGTERM);
}

void DisregardInterrupt(int /*signal*/) {}

ExitCode CodeOf(int signal) noexcept {
  if (signal == SIGTERM) return ExitCode::Terminated;
  return signal == SIGHUP ? ExitCode::HungUp : ExitCode::Interrupted;
}

std::string_view ReasonOf(int signal) noexcept {
  if (signal == SIGTERM) return "asked to end (SIGTERM)";
  return signal == SIGHUP ? "the terminal was closed (SIGHUP)" : "stopped on request";
}

}  // namespace

InterruptWatch::InterruptWatch(Interrupts interrupts) noexcept
    : signals_{WatchedSignal{SIGINT}, WatchedSignal{SIGTERM}, WatchedSignal{SIGHUP}},
      remembers_(interrupts == Interrupts::Remembered) {
  requestedSignal = 0;
  for (WatchedSignal& signal : signals_) {
    sigaction(signal.number, nullptr, &signal.before);
    signal.watched = signal.before.sa_handler != SIG_IGN;
  }
  if (remembers_) HandleWith(RememberInterrupt);
}

InterruptWatch::~InterruptWatch() {
  const bool changed = remembers_ || pastPointOfNoReturn_;
  const bool reportsResult = remembers_ && pastPointOfNoReturn_;
  if (changed && !reportsResult) RestoreActions();
}

// The handler's variable is shared, but it means nothing without a watch.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
bool InterruptWatch::Requested() const noexcept {
  return InterruptRequested();
}

void InterruptWatch::StopWhenRequested() const {
  if (Requested()) throw Error(error_number::unspecified, "interrupted");
}

void InterruptWatch::PassPointOfNoReturn() {
  HandleWith(DisregardInterrupt);  // first, so that no interrupt slips in between
  if (Requested()) RestoreActions();
  StopWhenRequested();
  pastPointOfNoReturn_ = true;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
Failure InterruptWatch::Interruption(std::string_view whatFailed, std::string_view whatToDo) const {
  const int signal = requestedSignal;
  return {CodeOf(signal), whatFailed, Error(error_number::unspecified, std::string(ReasonOf(signal))),
          whatToDo};
}

void InterruptWatch::HandleWith(void (*handler)(int)) const noexcept {
  for (const WatchedSignal& signal : signals_) {
    if (signal.watched) SetHandler(signal.number, handler);
  }
}

void InterruptWatch::RestoreActions() const noexcept {
  for (const WatchedSignal& signal : signals_) {
    if (signal.watched) sigaction(signal.number, &signal.before, nullptr);
  }
}

bool InterruptRequested() noexcept {
  return requestedSignal != 0;
}

}  // namespace krnqb::cli
