#pragma once

#include <functional>

#include "files/descriptor.h"
#include "krnqb/error.h"

namespace krnqb::files {

/// Returns whether the user has asked the program to stop. Null: never.
using InterruptQuery = std::function<bool()>;

enum class Readiness { ToRead, ToWrite };

/// Waits until a file can be read or written without blocking, or until the other end of a pipe is closed.
/// Throws Error if the user interrupts the wait; a file that is ready is not waited for, even then.
void WaitFor(const FileDescriptor& file, Readiness readiness, const InterruptQuery& interrupted);

/// Waits for a moment before something is tried again. Throws Error if the user interrupts the wait.
void WaitBriefly(const InterruptQuery& interrupted);

/// Throws Error if the user has asked the program to stop.
inline void StopIfInterrupted(const InterruptQuery& interrupted) {
  if (interrupted && interrupted()) throw Error(error_number::unspecified, "interrupted");
}

}  // namespace krnqb::files
