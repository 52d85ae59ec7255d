#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>

namespace krnqb::testing {

/// What the test processor is told by environment variables, read at each creation:
///
///   KRNQB_RECORDING          path of the recording that it answers from
///   KRNQB_REFUSED_CALL       the call that it refuses: creation, connection, session, company, major, minor,
///                            request (each one), or request:N (the N-th of this processor)
///   KRNQB_REFUSAL_NUMBER     the HRESULT of the refusal in eight hexadecimal digits; 80040400 when not given
///   KRNQB_REFUSAL_TEXT       the refusal's description; none when not given
///   KRNQB_ERRORS_UNSUPPORTED anything: the processor does not say that its interface tells errors
///   KRNQB_VERSION_BITS       16 (the default) or 32: the width of the versions that it writes
///   KRNQB_CALL_LOG           path of a file that each call is appended to, a line each
struct Orders {
  std::filesystem::path recording;
  std::string refusedCall;
  HRESULT refusalNumber = 0;
  std::optional<std::wstring> refusalText;
  bool errorsUnsupported = false;
  bool wideVersions = false;
  std::filesystem::path callLog;
};

Orders ReadOrders();

}  // namespace krnqb::testing
