#include "cli/console/interrupt_watch.h"

#include <exception>
#include <utility>

#include "krnqb/error.h"

namespace krnqb::cli {
namespace {

ExitCode CodeOf(EndRequest request) noexcept {
  if (request == EndRequest::Termination) return ExitCode::Terminated;
  return request == EndRequest::HangUp ? ExitCode::HungUp : ExitCode::Interrupted;
}

}  // namespace

InterruptWatch::InterruptWatch(Interrupts interrupts) : remembers_(interrupts == Interrupts::Remembered) {
  if (remembers_) requests_.Remember();
}

InterruptWatch::~InterruptWatch() {
  const bool changed = remembers_ || pastPointOfNoReturn_;
  const bool reportsResult = remembers_ && pastPointOfNoReturn_;
  if (changed && !reportsResult) requests_.Restore();
}

// The request is remembered outside the object, but it means nothing without a watch.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
bool InterruptWatch::Requested() const noexcept {
  return InterruptRequested();
}

void InterruptWatch::ListenThrough(std::function<void()> listen) {
  listen_ = std::move(listen);
}

void InterruptWatch::Listen() const {
  if (!listen_) return;
  constexpr std::chrono::milliseconds pause{50};
  const auto now = std::chrono::steady_clock::now();
  if (now < listenAgain_) return;
  try {
    listen_();
  } catch (const std::exception&) {
    // A window that cannot be updated does not end the work.
  }
  listenAgain_ = std::chrono::steady_clock::now() + pause;
}

bool InterruptWatch::ListenedAndRequested() const {
  Listen();
  return Requested();
}

void InterruptWatch::StopWhenRequested() const {
  if (ListenedAndRequested()) throw Error(error_number::unspecified, "interrupted");
}

void InterruptWatch::PassPointOfNoReturn() {
  requests_.Disregard();  // first, so that no interrupt slips in between
  if (Requested()) requests_.Restore();
  StopWhenRequested();
  pastPointOfNoReturn_ = true;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
Failure InterruptWatch::Interruption(std::string_view whatFailed, std::string_view whatToDo) const {
  const EndRequest request = RememberedRequest();
  return {CodeOf(request), whatFailed, Error(error_number::unspecified, std::string(ReasonOf(request))),
          whatToDo};
}

bool InterruptRequested() noexcept {
  return RememberedRequest() != EndRequest::None;
}

}  // namespace krnqb::cli
