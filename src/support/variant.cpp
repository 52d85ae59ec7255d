#include "krnqb/variant.h"

#include <fmt/format.h>

#include "krnqb/error.h"
#include "support/number_text.h"

namespace krnqb {

bool Variant::IsObject() const noexcept {
  return std::holds_alternative<XmlElement>(value_) || std::holds_alternative<ObjectReference>(value_);
}

bool Variant::IsNothing() const noexcept {
  if (const auto* element = std::get_if<XmlElement>(&value_)) return !*element;
  const auto* reference = std::get_if<ObjectReference>(&value_);
  return reference != nullptr && *reference == nullptr;
}

const XmlElement* Variant::AsElement() const noexcept {
  const auto* element = std::get_if<XmlElement>(&value_);
  return element != nullptr && *element ? element : nullptr;
}

std::string Variant::TakeText() noexcept {
  std::string* const text = std::get_if<std::string>(&value_);
  if (text == nullptr) return {};
  std::string taken = std::move(*text);
  value_ = std::monostate();
  return taken;
}

std::string Variant::ToText() const {
  if (IsEmpty()) return {};
  if (IsNothing()) throw Error(error_number::objectNotSet);
  if (const auto* text = AsText()) return *text;
  if (const auto* truth = AsBoolean()) return *truth ? "True" : "False";
  if (const auto* number = AsInteger()) return fmt::format("{}", *number);
  if (const auto* number = AsLong()) return fmt::format("{}", *number);
  if (const auto* number = AsDouble()) return GeneralNumberText(*number);
  throw Error(error_number::typeMismatch);
}

}  // namespace krnqb
