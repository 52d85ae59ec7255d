#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "krnqb/request_processor.h"
#include "qbxml/exchange_header.h"

namespace krnqb {

/// Writes an exchange with a request processor as JSON lines, UTF-8: first the company's path, the
/// processor's version and what is known of the import (see `ExchangeHeader`),
///
///     {"exchange":1,"company":"...","major":1,"minor":1}
///
/// then one line per request, with the response or the error with which it was refused:
///
///     {"request":"...","response":"..."}
///     {"request":"...","error":{"number":-2147220480,"description":"..."}}
class ExchangeRecorder {
 public:
  /// `lines` must outlive the recorder. `header` holds the optional members of the first line.
  explicit ExchangeRecorder(std::ostream& lines, ExchangeHeader header = {})
      : output_(lines), header_(std::move(header)) {}

  /// Writes the first line on the first call; does nothing on later calls.
  void RecordSession(std::string_view company, const ProcessorVersion& processor);
  void RecordAnswer(std::string_view request, std::string_view response);
  void RecordRefusal(std::string_view request, std::int32_t number, std::string_view description);

 private:
  std::ostream& output_;
  ExchangeHeader header_;
  bool sessionRecorded_ = false;
};

/// Return the line of a request with its response, or with its refusal; with its line end.
std::string RecordedAnswerLine(std::string_view request, std::string_view response);
std::string RecordedRefusalLine(std::string_view request, std::int32_t number, std::string_view description);

/// Returns a factory of processors that forward every call to those of `inner` and record it.
std::shared_ptr<RequestProcessorFactory> RecordingProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                             std::shared_ptr<ExchangeRecorder> recorder);

}  // namespace krnqb
