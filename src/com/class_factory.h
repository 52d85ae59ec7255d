#pragma once

#include <unknwn.h>

#include "com/objects/com_object.h"
#include "com/server_class.h"

namespace krnqb::com {

/// Creates the objects of one class.
class ClassFactory final : public ComObject<IClassFactory> {
 public:
  explicit ClassFactory(const ServerClass& serverClass) noexcept : serverClass_(serverClass) {}

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) noexcept override;
  STDMETHODIMP LockServer(BOOL lock) noexcept override;

 private:
  const ServerClass& serverClass_;
};

}  // namespace krnqb::com
