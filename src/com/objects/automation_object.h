#pragma once

#include <ole2.h>

#include <type_traits>
#include <utility>

#include "com/calls/late_bound_calls.h"
#include "com/objects/com_object.h"
#include "com/objects/outgoing_values.h"
#include "com/values/error_mapping.h"

namespace krnqb::com {

/// An object with a dual interface of our type library: implements IDispatch and ISupportErrorInfo and
/// provides the error handling that every method uses.
template <typename Interface, typename... Others>
class AutomationObject : public ComObject<Interface, ISupportErrorInfo, Others...> {
 public:
  STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** information) noexcept override {
    return lateBound_.GetTypeInfo(index, information);
  }
  STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID /*locale*/,
                             DISPID* members) noexcept override {
    return lateBound_.GetIDsOfNames(reserved, names, count, members);
  }
  STDMETHODIMP Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                      VARIANT* result, EXCEPINFO* exception, UINT* argument) noexcept override {
    const ComPointer<IUnknown> self(static_cast<Interface*>(this));
    return lateBound_.Invoke(static_cast<Interface*>(this), member, reserved, locale, flags, arguments,
                             result, exception, argument);
  }

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID interfaceId) noexcept override {
    return interfaceId == __uuidof(Interface) || interfaceId == IID_IDispatch ? S_OK : S_FALSE;
  }

 protected:
  /// `name` is the error source that hosts see.
  explicit AutomationObject(const wchar_t* name) noexcept : name_(name) {}

  void* Find(REFIID interfaceId) noexcept override {
    if (interfaceId == IID_IDispatch) return static_cast<IDispatch*>(static_cast<Interface*>(this));
    return ComObject<Interface, ISupportErrorInfo, Others...>::Find(interfaceId);
  }

  /// Runs a method without a result. Holds a reference to the object meanwhile, since the call may drop the
  /// last one.
  template <typename Body>
  HRESULT Do(Body&& body) noexcept {
    const ComPointer<IUnknown> self(static_cast<Interface*>(this));
    return Guarded({name_, __uuidof(Interface)}, std::forward<Body>(body));
  }

  /// Runs a method with a result; on failure `result` is 0, Empty or null.
  template <typename Result, typename Body>
  HRESULT Give(Result* result, Body&& body) noexcept {
    if (result == nullptr) return E_POINTER;
    *result = Result{};
    return Do([&] { Put(body(), *result); });
  }

 private:
  const wchar_t* name_;
  LateBoundCalls lateBound_{__uuidof(Interface)};
};

}  // namespace krnqb::com
