#pragma once

#include <istream>
#include <memory>
#include <string>

#include "krnqb/request_processor.h"

namespace krnqb {

/// Processors that answer from a recorded exchange (see `ExchangeRecorder`): the n-th request of a given text
/// gets the n-th recorded answer to it, the last one again when there are no more. A request that was not
/// recorded is error -2147467259, whose description holds its text. All processors of one factory go on in
/// the same recording.
///
/// The recording is read whole. Throws Error -2147467259 naming `recordingName`, the line and the fault when
/// it is none.
std::shared_ptr<RequestProcessorFactory> ReplayingProcessors(std::istream& recording,
                                                             const std::string& recordingName);

}  // namespace krnqb
