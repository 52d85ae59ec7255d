#include "cli/system/end_requests.h"

#include <array>
#include <csignal>

namespace krnqb::cli {
namespace {

constexpr std::array watchedSignals{SIGINT, SIGTERM, SIGHUP};

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
  for (const int watched : watchedSignals) sigaddset(&action.sa_mask, watched);
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
}

void EndAtOnceOn(int signal) noexcept {
  struct sigaction current {};
  sigaction(signal, nullptr, &current);
  if (current.sa_handler == RememberInterrupt) SetHandler(signal, SIG_DFL);
}

// A further SIGHUP has no effect, since a terminal that closes may send several.
void RememberInterrupt(int signal) {
  if (requestedSignal != 0) return;
  requestedSignal = signal;
  EndAtOnceOn(SIGINT);
  EndAtOnceOn(SIGTERM);
}

void DisregardInterrupt(int /*signal*/) {}

struct WatchedSignal {
  int number = 0;
  bool watched = false;
  struct sigaction before {};
};

}  // namespace

struct EndRequests::Actions {
  void HandleWith(void (*handler)(int)) const noexcept {
    for (const WatchedSignal& signal : signals) {
      if (signal.watched) SetHandler(signal.number, handler);
    }
  }

  std::array<WatchedSignal, watchedSignals.size()> signals{};
};

EndRequests::EndRequests() : before_(std::make_unique<Actions>()) {
  requestedSignal = 0;
  for (std::size_t index = 0; index < watchedSignals.size(); ++index) {
    WatchedSignal& signal = before_->signals.at(index);
    signal.number = watchedSignals.at(index);
    sigaction(signal.number, nullptr, &signal.before);
    signal.watched = signal.before.sa_handler != SIG_IGN;
  }
}

EndRequests::~EndRequests() = default;

void EndRequests::Remember() const noexcept {
  before_->HandleWith(RememberInterrupt);
}

void EndRequests::Disregard() const noexcept {
  before_->HandleWith(DisregardInterrupt);
}

void EndRequests::Restore() const noexcept {
  for (const WatchedSignal& signal : before_->signals) {
    if (signal.watched) sigaction(signal.number, &signal.before, nullptr);
  }
}

void RequestInterruption() noexcept {
  if (requestedSignal == 0) requestedSignal = SIGINT;
}

EndRequest RememberedRequest() noexcept {
  switch (requestedSignal) {
    case 0:
      return EndRequest::None;
    case SIGTERM:
      return EndRequest::Termination;
    case SIGHUP:
      return EndRequest::HangUp;
    default:
      return EndRequest::Interruption;
  }
}

std::string_view ReasonOf(EndRequest request) noexcept {
  if (request == EndRequest::Termination) return "asked to end (SIGTERM)";
  return request == EndRequest::HangUp ? "the terminal was closed (SIGHUP)" : "stopped on request";
}

}  // namespace krnqb::cli
