#include "com/calls/late_bound_calls.h"

#include "com/calls/argument_preparation.h"
#include "com/calls/type_library.h"
#include "com/values/error_mapping.h"

namespace krnqb::com {
namespace {

// Runs a call that reports failure through its result alone.
template <typename Body>
HRESULT Answered(Body&& body) noexcept {
  try {
    return body();
  } catch (const Error& error) {
    return ResultOf(error);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace

HRESULT LateBoundCalls::GetTypeInfo(UINT index, ITypeInfo** information) noexcept {
  if (information == nullptr) return E_POINTER;
  *information = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  return Answered([&] {
    *information = ComPointer<ITypeInfo>(&TypeInformation()).Detach();
    return S_OK;
  });
}

HRESULT LateBoundCalls::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count,
                                      DISPID* members) noexcept {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || members == nullptr) return E_POINTER;
  return Answered([&] { return TypeInformation().GetIDsOfNames(names, count, members); });
}

HRESULT LateBoundCalls::Invoke(IDispatch* object, DISPID member, REFIID reserved, LCID locale, WORD flags,
                               DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                               UINT* argument) noexcept {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (arguments == nullptr) return E_INVALIDARG;
  if (result != nullptr) VariantInit(result);
  try {
    ITypeInfo& information = TypeInformation();
    PreparedCall call(information, member, flags, locale, *arguments);
    // A leftover error object would be mistaken for one of this call.
    ForgetErrors();
    VariantValue dropped;
    EXCEPINFO unread{};
    EXCEPINFO& failure = exception == nullptr ? unread : *exception;
    const HRESULT outcome =
        information.Invoke(object, member, call.Flags(), call.Arguments(),
                           result == nullptr ? dropped.Receive() : result, &failure, nullptr);
    if (SUCCEEDED(outcome)) call.WriteBack();
    if (exception == nullptr && FAILED(outcome)) static_cast<void>(ErrorOf(outcome, unread));
    return outcome;
  } catch (const CallFault& fault) {
    if (argument != nullptr && fault.argument) *argument = *fault.argument;
    return fault.result;
  } catch (...) {
    return Answered([]() -> HRESULT { throw; });
  }
}

ITypeInfo& LateBoundCalls::TypeInformation() {
  if (!typeInformation_) typeInformation_ = TypeInformationOf(interfaceId_);
  return *typeInformation_;
}

}  // namespace krnqb::com
