#include "com/values/variant_value.h"

#include "com/values/error_mapping.h"
#include "com/values/text.h"

namespace krnqb::com {

VariantValue VariantValue::CopyOf(const VARIANT& source) {
  VariantValue copy;
  const VARIANT* followed = Followed(source);
  if (followed == nullptr) throw ErrorOf(DISP_E_TYPEMISMATCH);
  // VariantCopyInd does not modify its source although the parameter is not const.
  Check(VariantCopyInd(&copy.value_, const_cast<VARIANT*>(followed)));
  return copy;
}

VariantValue VariantValue::OfText(std::string_view text) {
  VariantValue made;
  made.value_.bstrVal = Bstr(text).Detach();
  made.value_.vt = VT_BSTR;
  return made;
}

VariantValue VariantValue::OfBoolean(bool truth) noexcept {
  VariantValue made;
  made.value_.vt = VT_BOOL;
  made.value_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
  return made;
}

VariantValue VariantValue::OfInteger(std::int16_t number) noexcept {
  VariantValue made;
  made.value_.vt = VT_I2;
  made.value_.iVal = number;
  return made;
}

VariantValue VariantValue::OfObject(ComPointer<IDispatch> object) noexcept {
  VariantValue made;
  made.value_.vt = VT_DISPATCH;
  made.value_.pdispVal = object.Detach();
  return made;
}

ComPointer<IDispatch> VariantValue::Object() const noexcept {
  if (value_.vt == VT_DISPATCH) return ComPointer<IDispatch>(value_.pdispVal);
  if (value_.vt == VT_UNKNOWN) return Query<IDispatch>(value_.punkVal);
  return {};
}

const VARIANT* Followed(const VARIANT& value) noexcept {
  // No caller nests deeper; a longer chain is a reference to itself.
  constexpr int deepest = 1000;
  const VARIANT* followed = &value;
  for (int depth = 0; followed != nullptr && followed->vt == (VT_BYREF | VT_VARIANT); ++depth) {
    if (depth == deepest) return nullptr;
    followed = followed->pvarVal;
  }
  return followed;
}

}  // namespace krnqb::com
