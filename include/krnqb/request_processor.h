#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace krnqb {

/// QuickBooks' request processor: one connection with at most one session. Texts are UTF-8. Every operation
/// reports a refusal by throwing Error with the processor's own number and description. Dropping the
/// processor ends its session.
class RequestProcessor {
 public:
  virtual ~RequestProcessor() = default;

  /// Sends one qbXML document in the session `ticket` and gives the answer's text.
  virtual std::string ProcessRequest(std::string_view ticket, std::string_view request) = 0;

  virtual void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) = 0;

  /// Opens a session with a company file and gives its ticket. An empty path means the company that is open
  /// in QuickBooks. File mode 2 is whatever mode QuickBooks allows.
  virtual std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) = 0;

  /// The full path of the session's company file; empty when none is open.
  virtual std::string GetCurrentCompanyFileName(std::string_view ticket) = 0;

  /// 1 for a processor of qbXML 1.x, 2 for one of qbXML 2.0.
  virtual std::int16_t MajorVersion() = 0;
  virtual std::int16_t MinorVersion() = 0;
};

/// Makes a new request processor for each session.
class RequestProcessorFactory {
 public:
  virtual ~RequestProcessorFactory() = default;

  /// Throws Error 429 if QuickBooks is not installed, another Error if it does not start. Never null.
  virtual std::unique_ptr<RequestProcessor> Create() = 0;
};

}  // namespace krnqb
