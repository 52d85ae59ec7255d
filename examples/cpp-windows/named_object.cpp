#include "named_object.h"

#include <oleauto.h>

#include <algorithm>

#include "errors.h"

namespace {

// Throws the error that a call reports in an EXCEPINFO, whose texts it takes over.
[[noreturn]] void Throw(const EXCEPINFO& exception) {
  const _bstr_t source(exception.bstrSource, false);
  const _bstr_t description(exception.bstrDescription, false);
  const _bstr_t helpFile(exception.bstrHelpFile, false);
  ICreateErrorInfo* creation = nullptr;
  IErrorInfo* information = nullptr;
  if (SUCCEEDED(CreateErrorInfo(&creation))) {
    creation->SetDescription(description);
    creation->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&information));
    creation->Release();
  }
  throw _com_error(exception.scode, information);
}

}  // namespace

_variant_t NamedObject::Get(const wchar_t* property) const {
  std::vector<_variant_t> none;
  return Invoke(property, DISPATCH_PROPERTYGET, none);
}

void NamedObject::Let(const wchar_t* property, const _variant_t& value) const {
  std::vector<_variant_t> values{value};
  Invoke(property, DISPATCH_PROPERTYPUT, values);
}

void NamedObject::Set(const wchar_t* property, IDispatch* object) const {
  std::vector<_variant_t> values{_variant_t(object)};
  Invoke(property, DISPATCH_PROPERTYPUTREF, values);
}

_variant_t NamedObject::Call(const wchar_t* method, std::vector<_variant_t> arguments) const {
  std::ranges::reverse(arguments);  // IDispatch expects the last one first
  // As in Visual Basic, a property that takes arguments is called like a method.
  return Invoke(method, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments);
}

_variant_t NamedObject::Invoke(const wchar_t* name, WORD flags, std::vector<_variant_t>& arguments) const {
  auto* spelled = const_cast<wchar_t*>(name);
  DISPID member = DISPID_UNKNOWN;
  Check(object_->GetIDsOfNames(IID_NULL, &spelled, 1, LOCALE_USER_DEFAULT, &member));

  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  DISPID assigned = DISPID_PROPERTYPUT;
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
    parameters.rgdispidNamedArgs = &assigned;
    parameters.cNamedArgs = 1;
  }
  _variant_t result;
  EXCEPINFO exception{};
  const HRESULT called = object_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &result,
                                         &exception, nullptr);
  if (called == DISP_E_EXCEPTION) Throw(exception);
  Check(called);
  return result;
}
