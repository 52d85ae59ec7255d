#pragma once

#include <ole2.h>

#include <string>
#include <utility>

#include "krnqb/error.h"

namespace krnqb::com {

// Inward: converts the result of an external call to the component's Error. A run-time error arrives as
// 0x800A0000 plus its number, or as a result that automation has a run-time error for. Such a result becomes
// that error unless it comes with a description of its own. Any other HRESULT is itself the error number.

/// Returns the error of a failed call. An empty description is replaced by the number's standard text, else
/// by the system's text, else by "Automation error".
Error ErrorOf(HRESULT result, std::string description = {});
/// As above; if `result` is DISP_E_EXCEPTION, takes the number and the text from `exception`. Frees the texts
/// in `exception`.
Error ErrorOf(HRESULT result, EXCEPINFO& exception);
/// Returns the error of a failed call to an interface of `object`, with the description from the error object
/// if the interface supports one. Call `ForgetErrors` before the call.
Error ErrorOf(HRESULT result, IUnknown& object, REFIID interfaceId);
/// Returns the error of a failed call of the system: its code as an HRESULT, with the system's text.
Error SystemError(DWORD code);
/// Returns the system's text of a result, else "Automation error".
std::string ResultText(HRESULT result);
/// Clears the thread's error object, so that any new one belongs to the next call.
void ForgetErrors() noexcept;

/// Throws if the call failed.
inline void Check(HRESULT result) {
  if (FAILED(result)) throw ErrorOf(result);
}

// Outward: every method of every object reports its failures through these functions.

/// Returns an error's HRESULT: 0x800A0000 plus the number of a run-time error, or the error number itself.
HRESULT ResultOf(const Error& error) noexcept;

/// The object and interface that raise an error.
struct ErrorSource {
  const wchar_t* name;
  const IID& interfaceId;
};

/// Returns the HRESULT of the exception being handled and stores its description in the thread's error
/// object. Call it only inside a catch block.
HRESULT ReportCaughtError(const ErrorSource& source) noexcept;

/// Runs the body of a method; returns S_OK, or the HRESULT of what it threw.
template <typename Body>
HRESULT Guarded(const ErrorSource& source, Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
    return S_OK;
  } catch (...) {
    return ReportCaughtError(source);
  }
}

}  // namespace krnqb::com
