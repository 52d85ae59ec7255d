#include "com/objects/incoming_values.h"

#include "com/calls/dom_element.h"
#include "com/calls/host_object.h"
#include "com/values/error_mapping.h"
#include "com/values/text.h"
#include "com/values/variant_value.h"

namespace krnqb::com {
namespace {

// Converts as automation does in English, whatever the user's locale.
constexpr LCID englishLocale = 0x0409;

std::string ConvertedText(VariantValue value) {
  Check(VariantChangeTypeEx(&value.Get(), &value.Get(), englishLocale, VARIANT_ALPHABOOL, VT_BSTR));
  return Utf8(TextOf(value.Get().bstrVal));
}

bool IsNothing(const VariantValue& value) {
  return value.IsObject() && value.Get().punkVal == nullptr;
}

}  // namespace

Variant HostObjectOf(IUnknown* object) {
  if (object == nullptr) return ObjectReference();
  return std::make_shared<HostObject>(ComPointer<IUnknown>(object));
}

Variant HostObjectOf(const VARIANT& value) {
  const VariantValue copy = VariantValue::CopyOf(value);
  if (copy.Type() == VT_EMPTY || copy.Type() == VT_NULL) return ObjectReference();
  if (!copy.IsObject()) throw Error(error_number::typeMismatch);
  return HostObjectOf(copy.Get().punkVal);
}

Variant RequestOf(const VARIANT& value) {
  VariantValue copy = VariantValue::CopyOf(value);
  if (copy.Type() == VT_EMPTY) return {};
  if (IsNothing(copy)) return ObjectReference();
  if (!copy.IsObject()) return ConvertedText(std::move(copy));
  const Variant object = HostObjectOf(copy.Get().punkVal);
  try {
    return ConvertedText(std::move(copy));
  } catch (const Error&) {
    return object;
  }
}

Variant AnswerOf(const VARIANT& value) {
  try {
    VariantValue copy = VariantValue::CopyOf(value);
    if (auto element = DomElement::Of(copy.Object())) return XmlElement(std::move(element));
    return ConvertedText(std::move(copy));
  } catch (const Error&) {
    return "";
  }
}

Variant SelectionOf(IDispatch* object) {
  if (object == nullptr) return ObjectReference();
  auto element = DomElement::Of(ComPointer<IDispatch>(object));
  if (element == nullptr) throw Error(error_number::typeMismatch);
  return XmlElement(std::move(element));
}

}  // namespace krnqb::com
