#include "com/objects/outgoing_values.h"

#include "com/calls/dom_element.h"
#include "com/calls/host_object.h"
#include "com/objects/collection_object.h"
#include "com/values/text.h"

namespace krnqb::com {
namespace {

VariantValue OutsideValue(const Variant& value) {
  VariantValue outside;
  VARIANT& made = outside.Get();
  if (const auto host = value.AsObject<HostObject>()) return host->Value();
  if (value.IsObject()) return VariantValue::OfObject(OutsideObject(value));
  if (const bool* truth = value.AsBoolean()) return VariantValue::OfBoolean(*truth);
  if (const auto* integer = value.AsInteger()) return VariantValue::OfInteger(*integer);
  if (const std::string* text = value.AsText()) return VariantValue::OfText(*text);
  if (const auto* number = value.AsLong()) {
    made.vt = VT_I4;
    made.lVal = *number;
  } else if (const double* real = value.AsDouble()) {
    made.vt = VT_R8;
    made.dblVal = *real;
  }
  return outside;
}

}  // namespace

void Put(std::string_view text, BSTR& result) {
  result = Bstr(text).Detach();
}

void Put(const Variant& value, VARIANT& result) {
  result = OutsideValue(value).Detach();
}

ComPointer<IDispatch> OutsideObject(const Variant& value) {
  if (const auto host = value.AsObject<HostObject>()) return host->Value().Object();
  if (const auto collection = value.AsObject<Collection>()) return MakeCollectionObject(*collection);
  if (const XmlElement* element = value.AsElement()) return DomElement::OutsideElement(*element);
  return {};
}

}  // namespace krnqb::com
