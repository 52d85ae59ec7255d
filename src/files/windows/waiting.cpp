#include "files/waiting.h"

#include "files/windows/handle.h"

namespace krnqb::files {
namespace {

constexpr DWORD sliceMilliseconds = 50;

}  // namespace

// Only an empty pipe has to be waited for: everything else is read and written by calls that end.
void WaitFor(const FileDescriptor& file, Readiness readiness, const InterruptQuery& interrupted) {
  const HANDLE handle = HandleOf(file);
  if (readiness == Readiness::ToWrite || GetFileType(handle) != FILE_TYPE_PIPE) return;
  DWORD available = 0;
  // A closed pipe fails.
  while (PeekNamedPipe(handle, nullptr, 0, nullptr, &available, nullptr) != FALSE && available == 0) {
    WaitBriefly(interrupted);
  }
}

void WaitBriefly(const InterruptQuery& interrupted) {
  Sleep(sliceMilliseconds);
  StopIfInterrupted(interrupted);
}

}  // namespace krnqb::files
