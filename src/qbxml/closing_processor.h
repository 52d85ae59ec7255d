#pragma once

#include <memory>
#include <string_view>

#include "krnqb/request_processor.h"

namespace krnqb {

/// A request processor whose session and connection are ended by calls, not by releasing it.
class ClosableProcessor : public RequestProcessor {
 public:
  virtual void EndSession(std::string_view ticket) = 0;
  virtual void CloseConnection() = 0;
};

/// Returns a processor that forwards every call to `inner`, which must not be null. Its destructor ends every
/// session that was begun and closes the connection if it was opened, whatever has failed in between;
/// failures to do so are ignored.
std::unique_ptr<RequestProcessor> ClosingProcessor(std::unique_ptr<ClosableProcessor> inner);

}  // namespace krnqb
