#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "krnqb/outside_world.h"
#include "krnqb/variant.h"
#include "support/error_pair.h"

namespace krnqb {

/// The state of the connection to QuickBooks between operations.
struct SessionState {
  std::unique_ptr<RequestProcessor> requestProcessor;
  std::string sessionTicket;
  std::string companyPath;           ///< the path stored by `QBCompany`
  std::int16_t qbStartingMonth = 0;  ///< first month of the fiscal year, 1 to 12; 0 if unknown
  std::int16_t qbMajorVersion = 0;
  std::int16_t qbMinorVersion = 0;
};

/// The session with QuickBooks: opened by the first operation that needs it, closed by `CloseSession`.
class Session {
 public:
  /// All arguments must outlive the session object. With a null factory no session can be opened (Error 429
  /// in the error pair).
  Session(SessionState& state, ErrorPair& errorPair, RequestProcessorFactory* processors,
          Observer& observer) noexcept
      : state_(state), errorPair_(errorPair), processors_(processors), observer_(observer) {}

  /// Returns whether a company is open in this session; false on any error.
  bool IsSessionOpen();

  /// Opens the session if it is not open, and then, unless `qbStartingMonth` is known, reads it from the
  /// company. Returns false, with the error pair set, if the session is refused or the month cannot be read;
  /// in the latter case the session stays open.
  bool EnsureSession();

  /// Destroys the request processor, which ends the session, and clears the company's path.
  void CloseSession() noexcept;

  /// Sends a request and returns the response text, or Empty if no session can be opened. A request that
  /// `ProcessRequest` refuses is reported to the observer at `place` and throws Error (RequestRefused) with
  /// the processor's number and description. Throws Error 91 if `request` is Nothing and Error 13 if it is
  /// any other object.
  Variant QbSerialize(const Variant& request, const Place& place);

  /// Returns an answer's memory to the request processor; see `RequestProcessor::UseAgain`. Frees it if no
  /// session is open.
  void UseAgain(std::string answer) noexcept;

  /// Builds a request of the catalogue, sends it and returns the response's document element; an empty
  /// element if no session can be opened or the response is not a document. Throws what `QbSerialize` throws.
  /// Dates as in `BuildRequest`.
  XmlElement Ask(std::int32_t requestNumber, Operation operation, std::string_view fromDate = {},
                 std::string_view toDate = {});

  /// Returns whether QuickBooks lists exactly this qbXML version. Throws Error 91 if no session can be opened
  /// or the response is not readable, Error -2147467259 if the text contains a double quote, and what
  /// `QbSerialize` throws.
  bool IsSDKVersionSupported(std::string_view version);

  /// Reads the open company's path and the processor's versions and returns the path. Returns the stored path
  /// if no session can be opened, and an empty text, with the error pair set, if qbXML 1.1 is not supported.
  /// Throws what `IsSDKVersionSupported` and the processor throw.
  std::string QBCompany();

  /// Returns the processor's major version as last read or set.
  std::int16_t MajorVersion() const noexcept { return state_.qbMajorVersion; }

 private:
  void OpenSession();
  bool CheckCompany();
  std::string Send(std::string_view request, const Place& place);

  SessionState& state_;
  ErrorPair& errorPair_;
  RequestProcessorFactory* processors_;
  Observer& observer_;
};

}  // namespace krnqb
