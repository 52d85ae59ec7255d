#include "host/late_bound.h"

#include <algorithm>

namespace krnqb::testing {

DISPID LateBound::Member(const wchar_t* name) const {
  LPOLESTR asked = const_cast<LPOLESTR>(name);
  DISPID identifier = DISPID_UNKNOWN;
  object_->GetIDsOfNames(IID_NULL, &asked, 1, LOCALE_USER_DEFAULT, &identifier);
  return identifier;
}

Outcome LateBound::Read(const wchar_t* name, std::vector<Value> arguments) const {
  return InvokeInOrder(name, DISPATCH_PROPERTYGET, std::move(arguments));
}

Outcome LateBound::Call(const wchar_t* name, std::vector<Value> arguments) const {
  return InvokeInOrder(name, DISPATCH_METHOD, std::move(arguments));
}

Outcome LateBound::Let(const wchar_t* name, Value value) const {
  return InvokeInOrder(name, DISPATCH_PROPERTYPUT, {std::move(value)}, {DISPID_PROPERTYPUT});
}

Outcome LateBound::Set(const wchar_t* name, Value value) const {
  return InvokeInOrder(name, DISPATCH_PROPERTYPUTREF, {std::move(value)}, {DISPID_PROPERTYPUT});
}

Outcome LateBound::LetAt(const wchar_t* name, Value index, Value value) const {
  return InvokeInOrder(name, DISPATCH_PROPERTYPUT, {std::move(index), std::move(value)},
                       {DISPID_PROPERTYPUT});
}

Outcome LateBound::CallNamed(const wchar_t* name, std::vector<Value> positional,
                             std::vector<NamedValue> named) const {
  std::vector<LPOLESTR> names{const_cast<LPOLESTR>(name)};
  for (const NamedValue& argument : named) names.push_back(const_cast<LPOLESTR>(argument.name));
  std::vector<DISPID> identifiers(names.size(), DISPID_UNKNOWN);
  Outcome outcome;
  outcome.result = object_->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()),
                                          LOCALE_USER_DEFAULT, identifiers.data());
  if (FAILED(outcome.result)) return outcome;
  // Named arguments come first, then the others from last to first.
  std::vector<Value> reversed;
  for (const NamedValue& argument : named) reversed.push_back(argument.value);
  std::reverse(positional.begin(), positional.end());
  for (const Value& argument : positional) reversed.push_back(argument);
  return Invoke(identifiers[0], DISPATCH_METHOD, std::move(reversed),
                {identifiers.begin() + 1, identifiers.end()});
}

Outcome LateBound::InvokeInOrder(const wchar_t* name, WORD flags, std::vector<Value> arguments,
                                 std::vector<DISPID> named) const {
  const DISPID member = Member(name);
  if (member == DISPID_UNKNOWN) {
    Outcome unknown;
    unknown.result = DISP_E_UNKNOWNNAME;
    return unknown;
  }
  std::reverse(arguments.begin(), arguments.end());
  return Invoke(member, flags, std::move(arguments), std::move(named));
}

Outcome LateBound::Invoke(DISPID member, WORD flags, std::vector<Value> reversed, std::vector<DISPID> named,
                          REFIID reserved) const {
  std::vector<VARIANT> arguments;
  for (const Value& value : reversed) arguments.push_back(value.Raw());
  DISPPARAMS parameters{.rgvarg = arguments.data(),
                        .rgdispidNamedArgs = named.data(),
                        .cArgs = static_cast<UINT>(arguments.size()),
                        .cNamedArgs = static_cast<UINT>(named.size())};
  Outcome outcome;
  const bool puts = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  outcome.result =
      object_->Invoke(member, reserved, LOCALE_USER_DEFAULT, flags, &parameters,
                      puts ? nullptr : outcome.value.Receive(), &outcome.exception, &outcome.wrongArgument);
  if (outcome.result == DISP_E_EXCEPTION) {
    if (outcome.exception.pfnDeferredFillIn != nullptr) {
      outcome.exception.pfnDeferredFillIn(&outcome.exception);
    }
    if (outcome.exception.bstrDescription != nullptr) outcome.description = outcome.exception.bstrDescription;
    SysFreeString(outcome.exception.bstrDescription);
    SysFreeString(outcome.exception.bstrSource);
    SysFreeString(outcome.exception.bstrHelpFile);
    outcome.exception.bstrDescription = outcome.exception.bstrSource = outcome.exception.bstrHelpFile =
        nullptr;
  }
  return outcome;
}

}  // namespace krnqb::testing
