#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace krnqb {

/// QuickBooks' request processor: one connection with at most one session. Texts are UTF-8. An operation that
/// the processor refuses throws Error with the processor's own number and description. The destructor ends
/// the session.
class RequestProcessor {
 public:
  virtual ~RequestProcessor() = default;

  /// Sends one qbXML document in the session `ticket` and returns the response text.
  virtual std::string ProcessRequest(std::string_view ticket, std::string_view request) = 0;

  /// Takes back an answer that is no longer needed, so that the next one may use its memory. By default it
  /// stays with the caller.
  virtual void UseAgain([[maybe_unused]] std::string&& answer) noexcept {}

  /// Opens the connection under the name and identifier of the application that uses it.
  virtual void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) = 0;

  /// Opens a session with a company file and returns its ticket. An empty path selects the company that is
  /// open in QuickBooks. File mode 2 means any mode that QuickBooks allows.
  virtual std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) = 0;

  /// Returns the full path of the session's company file, or an empty text if none is open.
  virtual std::string GetCurrentCompanyFileName(std::string_view ticket) = 0;

  /// Returns 1 for a qbXML 1.x processor, 2 for a qbXML 2.0 processor.
  virtual std::int16_t MajorVersion() = 0;
  /// Returns the part of the processor's version after the point.
  virtual std::int16_t MinorVersion() = 0;
};

/// Creates the request processor of each session.
class RequestProcessorFactory {
 public:
  virtual ~RequestProcessorFactory() = default;

  /// Returns a new request processor, never null. Throws Error 429 if QuickBooks is not installed, or another
  /// Error if it does not start.
  virtual std::unique_ptr<RequestProcessor> Create() = 0;
};

}  // namespace krnqb
