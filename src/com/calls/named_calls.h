#pragma once

#include <ole2.h>

#include <span>
#include <string_view>

#include "com/values/com_pointer.h"
#include "com/values/variant_value.h"

namespace krnqb::com {

/// A host's object, called by the names of its members. Script engines, Visual Basic classes and C++ objects
/// answer in different ways; each is met. Failures are thrown as the object's own error (438 when it has no
/// such member).
class NamedCalls {
 public:
  /// Error 91 without an object.
  explicit NamedCalls(ComPointer<IDispatch> calledObject);

  /// The member's dispid; error 438 when there is none.
  DISPID Member(std::wstring_view name) const;

  /// A member without arguments: a property, or a method that is called.
  VariantValue Get(std::wstring_view name) const;
  /// A member with one argument: a method, a property with an argument, or a property that gives a collection
  /// whose default member takes it.
  VariantValue Get(std::wstring_view name, VARIANT argument) const;
  /// Calls a method. Arguments stand in their own order and stay the caller's.
  VariantValue Call(std::wstring_view name, std::span<const VARIANT> arguments) const;
  /// Assigns a property.
  void Set(std::wstring_view name, VARIANT value) const;

  /// Calls a method with a text that it may take by reference and change; what it leaves there is dropped.
  void CallWithText(std::wstring_view name, std::string_view text) const;

 private:
  struct Outcome;
  Outcome Invoke(DISPID member, WORD flags, std::span<const VARIANT> arguments) const;
  Outcome GetMember(DISPID member) const;
  bool TakesTextReference(DISPID member) const;

  ComPointer<IDispatch> object;
};

/// The object that a member gave; error 91 for Nothing, 424 for what is no object, 438 for one that
/// cannot be called by name.
ComPointer<IDispatch> RequiredObject(const VariantValue& value);

}  // namespace krnqb::com
