#pragma once

#include <ole2.h>

#include <type_traits>
#include <utility>

#include "com/calls/late_bound_calls.h"
#include "com/objects/com_object.h"
#include "com/objects/outgoing_values.h"
#include "com/values/error_mapping.h"

namespace krnqb::com {

/// An object with a dual interface of our type library: IDispatch, ISupportErrorInfo, and the way in which
/// every method answers.
template <typename Interface, typename... Others>
class AutomationObject : public ComObject<Interface, ISupportErrorInfo, Others...> {
 public:
  STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** information) noexcept override {
    return lateBound.GetTypeInfo(index, information);
  }
  STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID /*locale*/,
                             DISPID* members) noexcept override {
    return lateBound.GetIDsOfNames(reserved, names, count, members);
  }
  STDMETHODIMP Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                      VARIANT* result, EXCEPINFO* exception, UINT* argument) noexcept override {
    const ComPointer<IUnknown> self(static_cast<Interface*>(this));
    return lateBound.Invoke(static_cast<Interface*>(this), member, reserved, locale, flags, arguments, result,
                            exception, argument);
  }

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID interfaceId) noexcept override {
    return interfaceId == __uuidof(Interface) || interfaceId == IID_IDispatch ? S_OK : S_FALSE;
  }

 protected:
  /// `sourceName` is the name under which hosts see the object's errors.
  explicit AutomationObject(const wchar_t* sourceName) noexcept : name(sourceName) {}

  void* Find(REFIID interfaceId) noexcept override {
    if (interfaceId == IID_IDispatch) return static_cast<IDispatch*>(static_cast<Interface*>(this));
    return ComObject<Interface, ISupportErrorInfo, Others...>::Find(interfaceId);
  }

  /// Runs a method that gives nothing. The object holds itself meanwhile: what it calls may drop the last
  /// reference to it.
  template <typename Body>
  HRESULT Do(Body&& body) noexcept {
    const ComPointer<IUnknown> self(static_cast<Interface*>(this));
    return Guarded({name, __uuidof(Interface)}, std::forward<Body>(body));
  }

  /// Runs a method that gives a value; on failure `result` holds 0, Empty or null.
  template <typename Result, typename Body>
  HRESULT Give(Result* result, Body&& body) noexcept {
    if (result == nullptr) return E_POINTER;
    *result = Result{};
    return Do([&] { Put(body(), *result); });
  }

 private:
  const wchar_t* name;
  LateBoundCalls lateBound{__uuidof(Interface)};
};

}  // namespace krnqb::com
