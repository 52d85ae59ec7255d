#include "cli/console/standard_streams.h"

#include "cli/console/interrupt_watch.h"

namespace krnqb::cli {

StandardStream::StandardStream(int descriptor)
    : descriptor_(descriptor), buffer_(descriptor_, InterruptRequested, operations_), stream_(&buffer_) {}

StandardStream::~StandardStream() {
  stream_.flush();
  descriptor_.Release();
}

bool StandardStream::ReaderHasEnded() const noexcept {
  return buffer_.Failure() == std::errc::broken_pipe;
}

}  // namespace krnqb::cli
