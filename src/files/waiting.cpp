#include "files/waiting.h"

#include <poll.h>

namespace krnqb::files {
namespace {

// A signal ends poll(2) at once, unless it arrives just before the call: then it is noticed after this time.
constexpr int sliceMilliseconds = 100;

}  // namespace

void WaitFor(const FileDescriptor& file, Readiness readiness, const InterruptQuery& interrupted) {
  pollfd awaited{.fd = file.Number(),
                 .events = readiness == Readiness::ToRead ? short{POLLIN} : short{POLLOUT},
                 .revents = 0};
  while (::poll(&awaited, 1, sliceMilliseconds) <= 0) StopIfInterrupted(interrupted);
}

void WaitBriefly(const InterruptQuery& interrupted) {
  ::poll(nullptr, 0, sliceMilliseconds);
  StopIfInterrupted(interrupted);
}

}  // namespace krnqb::files
