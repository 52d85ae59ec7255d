#pragma once

#include <ole2.h>

#include <span>
#include <string_view>

#include "com/values/com_pointer.h"
#include "com/values/variant_value.h"

namespace krnqb::com {

/// Calls a host's object by member name. Script engines, Visual Basic classes and C++ objects dispatch in
/// different ways; all of them work. A failed call throws the object's own error (438 if the member is
/// missing).
class NamedCalls {
 public:
  /// Throws Error 91 if `object` is null.
  explicit NamedCalls(ComPointer<IDispatch> object);

  /// Returns the member's dispid; throws Error 438 if it is missing.
  DISPID Member(std::wstring_view name) const;

  /// Reads a property or calls a method, without arguments.
  VariantValue Get(std::wstring_view name) const;
  /// Calls a method with one argument, reads a property that takes one, or reads a collection property and
  /// calls the collection's default member with it.
  VariantValue Get(std::wstring_view name, VARIANT argument) const;
  /// Calls a method. Arguments are in declaration order; the caller keeps ownership.
  VariantValue Call(std::wstring_view name, std::span<const VARIANT> arguments) const;
  /// Assigns a property.
  void Set(std::wstring_view name, VARIANT value) const;

  /// Calls a method with a text that it may take by reference and modify; the modified text is discarded.
  void CallWithText(std::wstring_view name, std::string_view text) const;

 private:
  struct Outcome;
  Outcome Invoke(DISPID member, WORD flags, std::span<const VARIANT> arguments) const;
  Outcome GetMember(DISPID member) const;
  bool TakesTextReference(DISPID member) const;

  ComPointer<IDispatch> object_;
};

/// Returns the object in a member's result. Throws Error 91 for Nothing, 424 if the value is not an object,
/// and 438 if the object cannot be called by name.
ComPointer<IDispatch> RequiredObject(const VariantValue& value);

}  // namespace krnqb::com
