#pragma once

#include <functional>
#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "krnqb/error.h"
#include "krnqb/request_processor.h"
#include "qbxml/exchange_header.h"

namespace krnqb {

/// A recorded answer: the response, or the error with which the request was refused.
using RecordedAnswer = std::variant<std::string, Error>;

/// Receives the requests of a recording with their answers, in order.
using RecordedAnswerReceiver = std::function<void(std::string&& request, RecordedAnswer&& answer)>;

/// Reads a recorded exchange (see `ExchangeRecorder`) to its end and returns what its first line says. Throws
/// what `ReplayingProcessors` throws; what `receive` throws is passed on.
ExchangeHeader ReadExchange(std::istream& recording, const std::string& recordingName,
                            const RecordedAnswerReceiver& receive);

/// A recorded exchange. Its processors answer from it and share the position in it. Their version is the
/// recorded processor's own, whatever the recorded import was shown.
class ReplayedExchange : public RequestProcessorFactory {
 public:
  /// Returns what the recording's first line says.
  virtual const ExchangeHeader& Header() const noexcept = 0;

  /// Returns the first request that the recording has no answer to; nullopt if every request had one.
  virtual const std::optional<std::string>& UnansweredRequest() const noexcept = 0;
};

/// Reads a recorded exchange (see `ExchangeRecorder`) to its end. The n-th request with a given text receives
/// the n-th recorded answer to it, then the last one repeatedly. A request that was not recorded throws Error
/// -2147467259 with the beginning of its message in the description. Of a recording that can be read at any
/// position no answer is kept in memory: each is read again when it is asked for, and throws the same number
/// if the recording has changed by then.
///
/// Throws Error -2147467259 if the recording is invalid, cannot be read or has a line of more than 2 GiB: its
/// description names `recordingName` and the fault, and the line unless the first one shows that the file is
/// not a recording at all. Throws std::bad_alloc if memory runs out.
std::shared_ptr<ReplayedExchange> ReplayingProcessors(std::unique_ptr<std::istream> recording,
                                                      const std::string& recordingName);

}  // namespace krnqb
