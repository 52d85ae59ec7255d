#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace krnqb::cli {

/// How the system has asked the program to end.
enum class EndRequest : std::uint8_t { None, Interruption, Termination, HangUp };

/// What happens when the system asks the program to end: SIGINT, SIGTERM and SIGHUP, or on Windows Ctrl+C,
/// Ctrl+Break and the closing of the console. Requests that the process already ignores, as in background
/// jobs, stay ignored. One object at a time.
class EndRequests {
 public:
  /// Changes nothing yet, but forgets an earlier request.
  EndRequests();
  ~EndRequests();
  EndRequests(const EndRequests&) = delete;
  EndRequests& operator=(const EndRequests&) = delete;

  /// Has the first request remembered. A second interruption or termination ends the process at once.
  void Remember() const noexcept;
  /// Has requests do nothing, even after the object is destroyed.
  void Disregard() const noexcept;
  /// Has requests do what they did before.
  void Restore() const noexcept;

 private:
  struct Actions;
  std::unique_ptr<Actions> before_;
};

/// Has the same effect as an interruption that is remembered: the first request counts.
void RequestInterruption() noexcept;

/// Returns the request that was remembered first.
EndRequest RememberedRequest() noexcept;

/// Returns why a command ends that such a request has stopped.
std::string_view ReasonOf(EndRequest request) noexcept;

}  // namespace krnqb::cli
