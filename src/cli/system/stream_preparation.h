#pragma once

namespace krnqb::cli {

/// Prepares the process before it opens anything. Opens /dev/null, on Windows NUL, in place of standard
/// descriptors that are closed, so that no file gets their numbers and is taken for a stream; using such a
/// stream fails, as it does if it is closed. Has writing to a closed pipe, or beyond the limit of a file's
/// size, fail instead of ending the process. Returns false if a descriptor can be neither used nor opened.
bool PrepareStandardStreams() noexcept;

}  // namespace krnqb::cli
