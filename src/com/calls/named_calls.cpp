#include "com/calls/named_calls.h"

#include <dispex.h>

#include <vector>

#include "com/values/error_mapping.h"
#include "com/values/text.h"

namespace krnqb::com {
namespace {

constexpr WORD methodOrProperty = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

// What a script engine returns for calling something that is not a function.
constexpr auto functionExpected = static_cast<HRESULT>(0x800A138AU);

constexpr std::int32_t objectRequired = 424;

// Whether the member might be a property rather than a method.
bool IsNoMethod(HRESULT result) {
  return result == functionExpected || result == DISP_E_MEMBERNOTFOUND;
}

// Whether the member might take no argument. Script engines report this in various ways.
bool MayTakeNoArgument(HRESULT result) {
  return IsNoMethod(result) || result == DISP_E_BADPARAMCOUNT || result == DISP_E_PARAMNOTFOUND ||
         result == DISP_E_TYPEMISMATCH || result == E_FAIL;
}

}  // namespace

struct NamedCalls::Outcome {
  HRESULT result = S_OK;
  EXCEPINFO exception{};
  VariantValue value;

  bool Failed() const noexcept { return FAILED(result); }
  // Returns the value, or throws the call's error.
  VariantValue Taken() {
    if (Failed()) throw ErrorOf(result, exception);
    return std::move(value);
  }
  void Drop() { static_cast<void>(ErrorOf(result, exception)); }
};

NamedCalls::NamedCalls(ComPointer<IDispatch> object) : object_(std::move(object)) {
  if (!object_) throw Error(error_number::objectNotSet);
}

DISPID NamedCalls::Member(std::wstring_view name) const {
  DISPID member = DISPID_UNKNOWN;
  // Script objects expose their members only through this interface.
  if (const auto extended = Query<IDispatchEx>(object_.get())) {
    const Bstr text(name);
    if (SUCCEEDED(extended->GetDispID(text.get(), fdexNameCaseInsensitive, &member))) return member;
    if (SUCCEEDED(extended->GetDispID(text.get(), fdexNameCaseSensitive, &member))) return member;
  }
  std::wstring text(name);
  LPOLESTR pointer = text.data();
  Check(object_->GetIDsOfNames(IID_NULL, &pointer, 1, LOCALE_USER_DEFAULT, &member));
  return member;
}

NamedCalls::Outcome NamedCalls::Invoke(DISPID member, WORD flags, std::span<const VARIANT> arguments) const {
  // IDispatch expects arguments in reverse order.
  std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
  DISPID assigned = DISPID_PROPERTYPUT;
  const bool isPut = (flags & DISPATCH_PROPERTYPUT) != 0;
  DISPPARAMS parameters{};
  parameters.rgvarg = reversed.data();
  parameters.cArgs = static_cast<UINT>(reversed.size());
  parameters.rgdispidNamedArgs = isPut ? &assigned : nullptr;
  parameters.cNamedArgs = isPut ? 1 : 0;
  Outcome outcome;
  UINT faulty = 0;
  outcome.result = object_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                   isPut ? nullptr : outcome.value.Receive(), &outcome.exception, &faulty);
  return outcome;
}

NamedCalls::Outcome NamedCalls::GetMember(DISPID member) const {
  Outcome outcome = Invoke(member, methodOrProperty, {});
  if (!IsNoMethod(outcome.result)) return outcome;
  Outcome property = Invoke(member, DISPATCH_PROPERTYGET, {});
  if (property.Failed()) {
    property.Drop();
    return outcome;
  }
  outcome.Drop();
  return property;
}

VariantValue NamedCalls::Get(std::wstring_view name) const {
  return GetMember(Member(name)).Taken();
}

VariantValue NamedCalls::Get(std::wstring_view name, VARIANT argument) const {
  const DISPID member = Member(name);
  Outcome outcome = Invoke(member, methodOrProperty, {&argument, 1});
  if (!MayTakeNoArgument(outcome.result)) return outcome.Taken();
  Outcome collection = GetMember(member);
  const ComPointer<IDispatch> items = collection.value.Object();
  if (!collection.Failed() && items) {
    Outcome item = NamedCalls(items).Invoke(DISPID_VALUE, methodOrProperty, {&argument, 1});
    if (item.result != DISP_E_MEMBERNOTFOUND) {
      outcome.Drop();
      return item.Taken();
    }
    item.Drop();
  }
  collection.Drop();
  return outcome.Taken();
}

VariantValue NamedCalls::Call(std::wstring_view name, std::span<const VARIANT> arguments) const {
  return Invoke(Member(name), methodOrProperty, arguments).Taken();
}

void NamedCalls::Set(std::wstring_view name, VARIANT value) const {
  Invoke(Member(name), DISPATCH_PROPERTYPUT, {&value, 1}).Taken();
}

void NamedCalls::CallWithText(std::wstring_view name, std::string_view text) const {
  const DISPID member = Member(name);
  VariantValue variable = VariantValue::OfText(text);
  VARIANT asVariable{};
  asVariable.vt = VT_BYREF | VT_VARIANT;
  asVariable.pvarVal = &variable.Get();
  VARIANT asReference{};
  asReference.vt = VT_BYREF | VT_BSTR;
  asReference.pbstrVal = &variable.Get().bstrVal;

  if (!TakesTextReference(member)) {
    Outcome outcome = Invoke(member, DISPATCH_METHOD, {&asVariable, 1});
    if (outcome.result != DISP_E_TYPEMISMATCH) return static_cast<void>(outcome.Taken());
    outcome.Drop();
    variable = VariantValue::OfText(text);
    asReference.pbstrVal = &variable.Get().bstrVal;
  }
  Outcome outcome = Invoke(member, DISPATCH_METHOD, {&asReference, 1});
  if (outcome.result != DISP_E_TYPEMISMATCH) return static_cast<void>(outcome.Taken());
  outcome.Drop();
  variable = VariantValue::OfText(text);
  Invoke(member, DISPATCH_METHOD, {&variable.Get(), 1}).Taken();
}

// Whether the object's own type information declares the method's first parameter as a text by reference,
// which accepts no other kind of reference.
bool NamedCalls::TakesTextReference(DISPID member) const {
  ComPointer<ITypeInfo> information;
  if (FAILED(object_->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.Receive())) || !information)
    return false;
  TYPEATTR* attributes = nullptr;
  if (FAILED(information->GetTypeAttr(&attributes))) return false;
  const UINT count = attributes->cFuncs;
  information->ReleaseTypeAttr(attributes);
  for (UINT index = 0; index < count; ++index) {
    FUNCDESC* function = nullptr;
    if (FAILED(information->GetFuncDesc(index, &function))) continue;
    const bool isMember = function->memid == member && function->cParams > 0;
    const TYPEDESC* type = isMember ? &function->lprgelemdescParam[0].tdesc : nullptr;
    const bool takes = isMember && type->vt == VT_PTR && type->lptdesc->vt == VT_BSTR;
    information->ReleaseFuncDesc(function);
    if (isMember) return takes;
  }
  return false;
}

ComPointer<IDispatch> RequiredObject(const VariantValue& value) {
  ComPointer<IDispatch> object = value.Object();
  if (object) return object;
  const bool isNothing = value.IsObject() && value.Get().punkVal == nullptr;
  if (isNothing) throw Error(error_number::objectNotSet);
  if (value.IsObject()) throw Error(error_number::memberNotSupported);
  throw Error(objectRequired, "Object required");
}

}  // namespace krnqb::com
