#pragma once

#include <ole2.h>

#include "com/values/com_pointer.h"

namespace krnqb::com {

/// Answers IDispatch for a dual interface by the type library, which is asked for at the first call.
class LateBoundCalls {
 public:
  explicit LateBoundCalls(const IID& dualInterfaceId) noexcept : interfaceId(dualInterfaceId) {}

  // The methods of IDispatch. `object` is the dual interface that a call goes to.

  HRESULT GetTypeInfo(UINT index, ITypeInfo** information) noexcept;
  HRESULT GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, DISPID* members) noexcept;
  HRESULT Invoke(IDispatch* object, DISPID member, REFIID reserved, LCID locale, WORD flags,
                 DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception, UINT* argument) noexcept;

 private:
  ITypeInfo& TypeInformation();

  const IID& interfaceId;
  ComPointer<ITypeInfo> typeInformation;
};

}  // namespace krnqb::com
