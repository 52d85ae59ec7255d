#pragma once

#include <istream>
#include <memory>
#include <string>

#include "krnqb/request_processor.h"

namespace krnqb {

/// Reads a recorded exchange (see `ExchangeRecorder`) to its end and returns a factory of processors that
/// answer from it. The n-th request with a given text receives the n-th recorded answer to it, then the last
/// one repeatedly. A request that was not recorded throws Error -2147467259 with its text in the description.
/// All processors of the factory share the position in the recording.
///
/// Throws Error -2147467259, naming `recordingName`, the line and the fault, if the recording is invalid,
/// cannot be read or has a line of more than 2 GiB; std::bad_alloc if memory runs out.
std::shared_ptr<RequestProcessorFactory> ReplayingProcessors(std::istream& recording,
                                                             const std::string& recordingName);

}  // namespace krnqb
