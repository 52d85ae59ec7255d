#include <windows.h>

#include <atomic>

#include "cli/system/end_requests.h"

namespace krnqb::cli {
namespace {

// Windows reports requests on a thread of its own.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<EndRequest> rememberedRequest{EndRequest::None};
static_assert(std::atomic<EndRequest>::is_always_lock_free);

EndRequest RequestOf(DWORD event) noexcept {
  switch (event) {
    case CTRL_C_EVENT:
      return EndRequest::Interruption;
    case CTRL_BREAK_EVENT:
      return EndRequest::Termination;
    default:
      return EndRequest::HangUp;
  }
}

// Windows ends the process as soon as the closing of the console, or of the session, has been handled, and
// after some seconds in any case.
BOOL Handled(EndRequest request) noexcept {
  if (request == EndRequest::HangUp) Sleep(INFINITE);
  return TRUE;
}

BOOL WINAPI RememberRequest(DWORD event) {
  const EndRequest request = RequestOf(event);
  EndRequest earlier = EndRequest::None;
  if (rememberedRequest.compare_exchange_strong(earlier, request)) return Handled(request);
  // The next handler is that of Windows, which ends the process.
  return request == EndRequest::HangUp ? Handled(request) : FALSE;
}

BOOL WINAPI DisregardRequest(DWORD event) {
  return Handled(RequestOf(event));
}

}  // namespace

struct EndRequests::Actions {
  // The handler added last is asked first.
  void HandleWith(PHANDLER_ROUTINE handler) noexcept {
    if (handler == current) return;
    if (handler != nullptr) SetConsoleCtrlHandler(handler, TRUE);
    if (current != nullptr) SetConsoleCtrlHandler(current, FALSE);
    current = handler;
  }

  PHANDLER_ROUTINE current = nullptr;
};

EndRequests::EndRequests() : before_(std::make_unique<Actions>()) {
  rememberedRequest = EndRequest::None;
}

EndRequests::~EndRequests() = default;

void EndRequests::Remember() const noexcept {
  before_->HandleWith(RememberRequest);
}

void EndRequests::Disregard() const noexcept {
  before_->HandleWith(DisregardRequest);
}

void EndRequests::Restore() const noexcept {
  before_->HandleWith(nullptr);
}

void RequestInterruption() noexcept {
  EndRequest earlier = EndRequest::None;
  rememberedRequest.compare_exchange_strong(earlier, EndRequest::Interruption);
}

EndRequest RememberedRequest() noexcept {
  return rememberedRequest;
}

std::string_view ReasonOf(EndRequest request) noexcept {
  if (request == EndRequest::Termination) return "asked to end (Ctrl+Break)";
  return request == EndRequest::HangUp ? "the console was closed" : "stopped on request";
}

}  // namespace krnqb::cli
