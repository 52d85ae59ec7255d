#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "krnqb/keyed_collection.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// Base class of the objects, other than XML elements, that a Variant can reference: plan objects,
/// collections, subtotals and a host's own objects.
class Object {
 public:
  virtual ~Object() = default;

 protected:
  Object() = default;
  Object(const Object&) = default;
  Object& operator=(const Object&) = default;
};

/// A shared reference to an object; null is Nothing.
using ObjectReference = std::shared_ptr<Object>;

/// A value whose type is known only at run time: Empty, Boolean, a 16- or 32-bit integer, a double, a UTF-8
/// text, an XML element or another object. An object reference may be null, which means Nothing.
class Variant {
 public:
  /// Creates an Empty value.
  Variant() = default;
  /// Creates a value of the argument's type. Texts are UTF-8 and are copied; objects are shared.
  Variant(bool truth) : value_(truth) {}                         // NOLINT(google-explicit-constructor)
  Variant(std::int16_t number) : value_(number) {}               // NOLINT(google-explicit-constructor)
  Variant(std::int32_t number) : value_(number) {}               // NOLINT(google-explicit-constructor)
  Variant(double number) : value_(number) {}                     // NOLINT(google-explicit-constructor)
  Variant(std::string text) : value_(std::move(text)) {}         // NOLINT(google-explicit-constructor)
  Variant(std::string_view text) : value_(std::string(text)) {}  // NOLINT(google-explicit-constructor)
  Variant(const char* text) : value_(std::string(text)) {}       // NOLINT(google-explicit-constructor)
  Variant(XmlElement element) : value_(std::move(element)) {}    // NOLINT(google-explicit-constructor)
  template <typename ObjectType>
    requires std::is_base_of_v<Object, ObjectType>
  Variant(std::shared_ptr<ObjectType> object)  // NOLINT(google-explicit-constructor)
      : value_(ObjectReference(std::move(object))) {}

  /// Returns whether the value is Empty.
  bool IsEmpty() const noexcept { return std::holds_alternative<std::monostate>(value_); }
  /// Returns whether the value is an XML element or another object, including Nothing.
  bool IsObject() const noexcept;
  /// Returns whether the value is a null object or an empty XML element.
  bool IsNothing() const noexcept;

  // The values. A pointer is valid as long as the Variant is neither changed nor destroyed.

  /// Returns the value if it is a Boolean, otherwise null.
  const bool* AsBoolean() const noexcept { return std::get_if<bool>(&value_); }
  /// Returns the value if it is a 16-bit integer, otherwise null.
  const std::int16_t* AsInteger() const noexcept { return std::get_if<std::int16_t>(&value_); }
  /// Returns the value if it is a 32-bit integer, otherwise null.
  const std::int32_t* AsLong() const noexcept { return std::get_if<std::int32_t>(&value_); }
  /// Returns the value if it is a double, otherwise null.
  const double* AsDouble() const noexcept { return std::get_if<double>(&value_); }
  /// Returns the value if it is a text, otherwise null.
  const std::string* AsText() const noexcept { return std::get_if<std::string>(&value_); }
  /// Returns the element if the value is a non-empty XML element, otherwise null.
  const XmlElement* AsElement() const noexcept;
  /// Returns the object if the value is an object of that class, otherwise null.
  template <typename ObjectType>
  std::shared_ptr<ObjectType> AsObject() const noexcept {
    const auto* reference = std::get_if<ObjectReference>(&value_);
    return reference == nullptr ? nullptr : std::dynamic_pointer_cast<ObjectType>(*reference);
  }

  /// Moves the text out and leaves Empty if the value is a text; otherwise returns an empty text and leaves
  /// the value.
  std::string TakeText() noexcept;

  /// Returns the value converted to text as automation converts it: Empty to the empty text, a Boolean to
  /// "True" or "False", a double to at most 15 significant digits. Throws Error 91 for Nothing and Error 13
  /// for any other object.
  std::string ToText() const;

 private:
  std::variant<std::monostate, bool, std::int16_t, std::int32_t, double, std::string, XmlElement,
               ObjectReference>
      value_;
};

/// The collection type of the automation interface: an ordered list of values, some of which have keys.
class Collection : public Object, public KeyedCollection<Variant> {};

}  // namespace krnqb
