#pragma once

namespace krnqb {

/// Returns the number of errno that says the same as an error of Windows (GetLastError): ETXTBSY if another
/// program has the file open, EIO if none says it.
int ErrnoOfWindowsError(unsigned long error) noexcept;

}  // namespace krnqb
