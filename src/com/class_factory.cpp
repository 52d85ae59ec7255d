#include "com/class_factory.h"

#include "com/values/error_mapping.h"

namespace krnqb::com {

STDMETHODIMP ClassFactory::CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  HRESULT found = S_OK;
  const HRESULT made = Guarded({serverClass_.programName, IID_IClassFactory},
                               [&] { found = serverClass_.create()->QueryInterface(interfaceId, object); });
  return FAILED(made) ? made : found;
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock) noexcept {
  LockLibrary(lock != FALSE);
  return S_OK;
}

}  // namespace krnqb::com
