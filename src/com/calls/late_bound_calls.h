#pragma once

#include <ole2.h>

#include "com/values/com_pointer.h"

namespace krnqb::com {

/// Implements IDispatch for a dual interface from the type library, which is loaded on the first call.
class LateBoundCalls {
 public:
  explicit LateBoundCalls(const IID& interfaceId) noexcept : interfaceId_(interfaceId) {}

  // The methods of IDispatch. `object` is the dual interface that receives the call.

  HRESULT GetTypeInfo(UINT index, ITypeInfo** information) noexcept;
  HRESULT GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, DISPID* members) noexcept;
  HRESULT Invoke(IDispatch* object, DISPID member, REFIID reserved, LCID locale, WORD flags,
                 DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception, UINT* argument) noexcept;

 private:
  ITypeInfo& TypeInformation();

  const IID& interfaceId_;
  ComPointer<ITypeInfo> typeInformation_;
};

}  // namespace krnqb::com
