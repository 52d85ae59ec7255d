#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "krnqb/outside_world.h"
#include "krnqb/variant.h"
#include "support/error_pair.h"

namespace krnqb {

/// What is kept of QuickBooks between the operations.
struct SessionState {
  std::unique_ptr<RequestProcessor> requestProcessor;
  std::string sessionTicket;
  std::string companyPath;           ///< the stored path of `QBCompany`
  std::int16_t qbStartingMonth = 0;  ///< first month of the fiscal year, 1 to 12; 0 when not known
  std::int16_t qbMajorVersion = 0;
  std::int16_t qbMinorVersion = 0;
};

/// The session with QuickBooks: opened by the first operation that needs it, asked in text, dropped by
/// `CloseSession`.
class Session {
 public:
  /// All four outlive the session object; a null factory means that there is no QuickBooks (429).
  Session(SessionState& state, ErrorPair& errorPair, RequestProcessorFactory* processors,
          Observer& observer) noexcept
      : state_(state), errorPair_(errorPair), processors_(processors), observer_(observer) {}

  /// Whether QuickBooks has a company open in our session. Any error counts as no.
  bool IsSessionOpen();

  /// Opens the session if it is not open, and then, unless `qbStartingMonth` is known, reads it from the
  /// company. False with the error pair set when the session is refused or the month cannot be read; in the
  /// latter case the session stays open.
  bool EnsureSession();

  /// Drops the request processor, which ends the session, and forgets the company's path.
  void CloseSession() noexcept;

  /// Sends a request and returns the response text, or Empty if no session can be opened. A request that
  /// `ProcessRequest` refuses is reported to the observer at `place` and throws Error (RequestRefused) with
  /// the processor's number and description. Throws 91 or 13 for a request without text.
  Variant QbSerialize(const Variant& request, const Place& place);

  /// Builds a request of the catalogue, sends it and returns the response's document element; an empty
  /// element if no session can be opened or the response is not a document. Throws what `QbSerialize` throws.
  /// Dates as in `BuildRequest`.
  XmlElement Ask(std::int32_t requestNumber, Operation operation, std::string_view fromDate = {},
                 std::string_view toDate = {});

  /// Whether the host answer lists exactly this version. Error 91 when there is no answer, -2147467259 when
  /// the text holds a double quote.
  bool IsSDKVersionSupported(std::string_view version);

  /// The open company's path, read together with the processor's versions; the stored path without a session;
  /// empty, with the error pair set, when qbXML 1.1 is not supported.
  std::string QBCompany();

  /// The processor's major version as it was last read or set.
  std::int16_t MajorVersion() const noexcept { return state_.qbMajorVersion; }

 private:
  void OpenSession();
  bool CheckCompany();
  std::string Send(std::string_view request, const Place& place);
  std::string MonthOfFiscalYear(const XmlElement& answer);

  SessionState& state_;
  ErrorPair& errorPair_;
  RequestProcessorFactory* processors_;
  Observer& observer_;
};

}  // namespace krnqb
