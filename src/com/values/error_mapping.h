#pragma once

#include <ole2.h>

#include <string>
#include <utility>

#include "krnqb/error.h"

namespace krnqb::com {

// Inward: what an outside call says, as the component's Error. Run-time errors come as 0x800A0000 and their
// number, or as the automation code that stands for them; every other HRESULT is the number itself.

/// The error of a failed call. Without a description it has the standard or the system's text of its number,
/// else "Automation error".
Error ErrorOf(HRESULT result, std::string description = {});
/// The same when DISP_E_EXCEPTION says that `exception` holds the number and the text, which are freed.
Error ErrorOf(HRESULT result, EXCEPINFO& exception);
/// The error of a failed call of an interface of `object`, described by the error object when the interface
/// has one. Call `ForgetErrors` before the call.
Error ErrorOf(HRESULT result, IUnknown& object, REFIID interfaceId);
/// Drops the thread's error object, so that the next one belongs to the next call.
void ForgetErrors() noexcept;

/// Throws the error of a call that failed.
inline void Check(HRESULT result) {
  if (FAILED(result)) throw ErrorOf(result);
}

// Outward: every method of every object reports its failures here.

/// Which object and interface an error comes from.
struct ErrorSource {
  const wchar_t* name;
  const IID& interfaceId;
};

/// The HRESULT of the exception being handled, its description left in the thread's error object. Call it in
/// a catch block only.
HRESULT ReportCaughtError(const ErrorSource& source) noexcept;

/// Runs the body of a method: S_OK, or what it threw.
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
