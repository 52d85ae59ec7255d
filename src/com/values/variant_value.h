#pragma once

#include <ole2.h>

#include <string>
#include <string_view>

#include "com/values/com_pointer.h"

namespace krnqb::com {

/// Owns a VARIANT, at first Empty.
class VariantValue {
 public:
  VariantValue() noexcept { VariantInit(&value); }
  VariantValue(VariantValue&& other) noexcept : value(other.Detach()) {}
  VariantValue& operator=(VariantValue&& other) noexcept {
    if (this != &other) {
      VariantClear(&value);
      value = other.Detach();
    }
    return *this;
  }
  ~VariantValue() { VariantClear(&value); }

  /// The value behind any number of references, with a reference of its own to objects and its own text.
  /// Throws what OLE Automation says of a value that cannot be copied.
  static VariantValue CopyOf(const VARIANT& source);
  static VariantValue OfText(std::string_view text);
  static VariantValue OfBoolean(bool truth) noexcept;
  static VariantValue OfInteger(std::int16_t number) noexcept;
  /// An object, which may be null (Nothing).
  static VariantValue OfObject(ComPointer<IDispatch> object) noexcept;

  VARIANT& Get() noexcept { return value; }
  const VARIANT& Get() const noexcept { return value; }
  VARTYPE Type() const noexcept { return value.vt; }
  /// Where a call puts a value that the caller is to clear.
  VARIANT* Receive() noexcept {
    VariantClear(&value);
    return &value;
  }
  /// Gives the value away; the caller clears it.
  [[nodiscard]] VARIANT Detach() noexcept {
    const VARIANT given = value;
    VariantInit(&value);
    return given;
  }

  /// The object by its automation interface; null when the value is no object or has no such interface.
  ComPointer<IDispatch> Object() const noexcept;
  bool IsObject() const noexcept { return value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN; }

 private:
  VARIANT value;
};

/// The value behind VT_BYREF | VT_VARIANT, however deep; null when the chain ends nowhere.
const VARIANT* Followed(const VARIANT& value) noexcept;

}  // namespace krnqb::com
