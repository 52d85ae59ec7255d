#include "com/values/variant_value.h"

#include "com/values/error_mapping.h"
#include "com/values/text.h"

namespace krnqb::com {

VariantValue VariantValue::CopyOf(const VARIANT& source) {
  VariantValue copy;
  const VARIANT* followed = Followed(source);
  if (followed == nullptr) throw ErrorOf(DISP_E_TYPEMISMATCH);
  // The system's call does not write to its source, though it is not declared so.
  Check(VariantCopyInd(&copy.value, const_cast<VARIANT*>(followed)));
  return copy;
}

VariantValue VariantValue::OfText(std::string_view text) {
  VariantValue made;
  made.value.bstrVal = Bstr(text).Detach();
  made.value.vt = VT_BSTR;
  return made;
}

VariantValue VariantValue::OfBoolean(bool truth) noexcept {
  VariantValue made;
  made.value.vt = VT_BOOL;
  made.value.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
  return made;
}

VariantValue VariantValue::OfInteger(std::int16_t number) noexcept {
  VariantValue made;
  made.value.vt = VT_I2;
  made.value.iVal = number;
  return made;
}

VariantValue VariantValue::OfObject(ComPointer<IDispatch> object) noexcept {
  VariantValue made;
  made.value.vt = VT_DISPATCH;
  made.value.pdispVal = object.Detach();
  return made;
}

ComPointer<IDispatch> VariantValue::Object() const noexcept {
  if (value.vt == VT_DISPATCH) return ComPointer<IDispatch>(value.pdispVal);
  if (value.vt == VT_UNKNOWN) return Query<IDispatch>(value.punkVal);
  return {};
}

const VARIANT* Followed(const VARIANT& value) noexcept {
  // Deeper than any caller nests them: a reference that leads back to itself.
  constexpr int deepest = 1000;
  const VARIANT* followed = &value;
  for (int depth = 0; followed != nullptr && followed->vt == (VT_BYREF | VT_VARIANT); ++depth) {
    if (depth == deepest) return nullptr;
    followed = followed->pvarVal;
  }
  return followed;
}

}  // namespace krnqb::com
