#include "host/object.h"

namespace krnqb::testing {
namespace {

long aliveObjects = 0;

bool SameName(const std::wstring& name, const wchar_t* asked) {
  return CompareStringOrdinal(name.c_str(), -1, asked, -1, TRUE) == CSTR_EQUAL;
}

}  // namespace

HostObject::HostObject() {
  ++aliveObjects;
}

HostObject::~HostObject() {
  --aliveObjects;
}

long HostObject::Alive() {
  return aliveObjects;
}

HRESULT HostObject::QueryInterface(REFIID identifier, void** object) {
  *object = nullptr;
  if (!IsEqualIID(identifier, IID_IUnknown) && !IsEqualIID(identifier, IID_IDispatch) &&
      !IsEqualIID(identifier, further)) {
    return E_NOINTERFACE;
  }
  AddRef();
  *object = static_cast<IDispatch*>(this);
  return S_OK;
}

ULONG HostObject::AddRef() {
  return static_cast<ULONG>(++references_);
}

ULONG HostObject::Release() {
  const long left = --references_;
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT HostObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT HostObject::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** information) {
  *information = nullptr;
  return E_NOTIMPL;
}

void NamedObject::Add(const std::wstring& name, WORD accepted, Function function) {
  members_.push_back({name, accepted, std::move(function)});
}

HRESULT NamedObject::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                   DISPID* identifiers) {
  for (UINT index = 0; index < count; ++index) identifiers[index] = DISPID_UNKNOWN;
  for (std::size_t index = 0; index < members_.size(); ++index) {
    if (!members_[index].name.empty() && SameName(members_[index].name, names[0])) {
      identifiers[0] = static_cast<DISPID>(index) + 1;
      return S_OK;
    }
  }
  return DISP_E_UNKNOWNNAME;
}

HRESULT NamedObject::Invoke(DISPID identifier, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                            DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                            UINT* /*argument*/) {
  for (std::size_t index = 0; index < members_.size(); ++index) {
    const Member& member = members_[index];
    const DISPID own = member.name.empty() ? DISPID_VALUE : static_cast<DISPID>(index) + 1;
    if (own != identifier) continue;
    if ((flags & member.accepted) == 0) return DISP_E_MEMBERNOTFOUND;
    HostCall call{.arguments = {}, .flags = flags, .result = result, .exception = exception};
    for (UINT position = parameters->cArgs; position > 0; --position) {
      call.arguments.push_back(&parameters->rgvarg[position - 1]);
    }
    const Held<NamedObject> kept = Held<NamedObject>::Sharing(this);
    const Function function = member.function;
    return function(call);
  }
  return DISP_E_MEMBERNOTFOUND;
}

HRESULT GiveText(const HostCall& call, std::wstring_view text) {
  if (call.result == nullptr) return S_OK;
  call.result->vt = VT_BSTR;
  call.result->bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return S_OK;
}

HRESULT GiveObject(const HostCall& call, IDispatch* object) {
  if (call.result == nullptr) return S_OK;
  call.result->vt = VT_DISPATCH;
  call.result->pdispVal = object;
  if (object != nullptr) object->AddRef();
  return S_OK;
}

HRESULT Raise(const HostCall& call, SCODE code, WORD shortCode, const wchar_t* description) {
  if (call.exception != nullptr) {
    *call.exception = {};
    call.exception->scode = code;
    call.exception->wCode = shortCode;
    call.exception->bstrDescription = description == nullptr ? nullptr : SysAllocString(description);
  }
  return DISP_E_EXCEPTION;
}

}  // namespace krnqb::testing
