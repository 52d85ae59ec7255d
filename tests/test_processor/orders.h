#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>

namespace krnqb::testing {

/// Environment variables that control the test processor, read at each creation:
///
///   KRNQB_RECORDING          path of the recording to answer from
///   KRNQB_REFUSED_CALL       the call to refuse: creation, connection, session, company, major, minor,
///                            request (every one), or request:N (the N-th of this processor)
///   KRNQB_REFUSAL_NUMBER     the HRESULT of the refusal in eight hexadecimal digits; default 80040400
///   KRNQB_REFUSAL_TEXT       the refusal's description; default none
///   KRNQB_ERRORS_UNSUPPORTED any value: the processor does not support error information
///   KRNQB_VERSION_BITS       16 (the default) or 32: the width of the versions that it writes
///   KRNQB_CALL_LOG           path of a file to which each call is appended, one per line
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
