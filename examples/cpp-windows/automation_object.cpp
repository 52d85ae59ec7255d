#include "automation_object.h"

#include <algorithm>

IDispatchPtr AutomationObject::Make(std::map<std::wstring, Member> members, const IID& interfaceId) {
  auto* object = new AutomationObject(interfaceId);
  DISPID next = 1;
  for (auto& [name, member] : members) {
    object->names_[name] = next;
    object->members_[next++] = std::move(member);
  }
  return object;
}

IDispatchPtr AutomationObject::Make(std::map<DISPID, Member> members, const IID& interfaceId) {
  auto* object = new AutomationObject(interfaceId);
  object->members_ = std::move(members);
  return object;
}

HRESULT AutomationObject::QueryInterface(REFIID wanted, void** object) {
  *object = nullptr;
  if (wanted != IID_IUnknown && wanted != IID_IDispatch && wanted != interfaceId_) return E_NOINTERFACE;
  *object = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

ULONG AutomationObject::AddRef() {
  return ++references_;
}

ULONG AutomationObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT AutomationObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT AutomationObject::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** information) {
  *information = nullptr;
  return E_NOTIMPL;
}

// Names are case-insensitive in automation, but the component spells them as they are declared here.
HRESULT AutomationObject::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT /*count*/, LCID /*locale*/,
                                        DISPID* members) {
  const auto found = names_.find(names[0]);
  *members = found == names_.end() ? DISPID_UNKNOWN : found->second;
  return found == names_.end() ? DISP_E_UNKNOWNNAME : S_OK;
}

// No exception may leave a COM method: a failure becomes an EXCEPINFO.
HRESULT AutomationObject::Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/,
                                 DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                 UINT* /*argument*/) {
  const auto found = members_.find(member);
  if (found == members_.end()) return DISP_E_MEMBERNOTFOUND;
  try {
    const IDispatchPtr self(this);  // a member may release the last other reference
    std::vector<_variant_t> arguments(parameters->cArgs);
    // Arguments come in reverse order, some by reference.
    for (UINT index = 0; index < parameters->cArgs; ++index)
      _com_util::CheckError(
          VariantCopyInd(&arguments[index], &parameters->rgvarg[parameters->cArgs - 1 - index]));
    _variant_t returned = found->second(arguments);
    if (result != nullptr) *result = returned.Detach();
    return S_OK;
  } catch (const _com_error& error) {
    if (exception == nullptr) return error.Error();
    *exception = {};
    exception->scode = error.Error();
    exception->bstrDescription = error.Description().copy();
    return DISP_E_EXCEPTION;
  } catch (...) {
    return E_UNEXPECTED;
  }
}
