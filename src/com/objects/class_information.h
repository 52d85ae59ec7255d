#pragma once

#include <ocidl.h>

#include "com/calls/type_library.h"
#include "com/objects/automation_object.h"

namespace krnqb::com {

/// An automation object of a creatable class: also implements IProvideClassInfo2.
template <typename Interface, typename... Others>
class CreatableObject : public AutomationObject<Interface, IProvideClassInfo2, Others...> {
 public:
  STDMETHODIMP GetClassInfo(ITypeInfo** information) noexcept override {
    if (information == nullptr) return E_POINTER;
    *information = nullptr;
    return Guarded({name_, IID_IProvideClassInfo2},
                   [&] { *information = TypeInformationOf(classIdentifier_).Detach(); });
  }

  STDMETHODIMP GetGUID(DWORD kind, GUID* identifier) noexcept override {
    if (identifier == nullptr) return E_POINTER;
    *identifier = eventsIdentifier_;
    const bool isKnown = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID && eventsIdentifier_ != GUID_NULL;
    if (!isKnown) *identifier = GUID_NULL;
    return isKnown ? S_OK : E_INVALIDARG;
  }

 protected:
  using Base = AutomationObject<Interface, IProvideClassInfo2, Others...>;

  /// `eventsIdentifier` is GUID_NULL for a class without events.
  CreatableObject(const wchar_t* name, const CLSID& classIdentifier, const IID& eventsIdentifier) noexcept
      : Base(name), name_(name), classIdentifier_(classIdentifier), eventsIdentifier_(eventsIdentifier) {}

  void* Find(REFIID interfaceId) noexcept override {
    if (interfaceId == IID_IProvideClassInfo) return static_cast<IProvideClassInfo2*>(this);
    return Base::Find(interfaceId);
  }

 private:
  const wchar_t* name_;
  const CLSID& classIdentifier_;
  const IID& eventsIdentifier_;
};

}  // namespace krnqb::com
