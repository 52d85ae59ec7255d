#pragma once

#include <ole2.h>

#include <string>
#include <string_view>

#include "com/values/com_pointer.h"

namespace krnqb::com {

/// Owns a VARIANT, initially Empty.
class VariantValue {
 public:
  VariantValue() noexcept { VariantInit(&value_); }
  VariantValue(VariantValue&& other) noexcept : value_(other.Detach()) {}
  VariantValue& operator=(VariantValue&& other) noexcept {
    if (this != &other) {
      VariantClear(&value_);
      value_ = other.Detach();
    }
    return *this;
  }
  ~VariantValue() { VariantClear(&value_); }

  /// Copies the value behind any number of references, with its own reference to an object and its own text.
  /// Throws OLE Automation's error if the value cannot be copied.
  static VariantValue CopyOf(const VARIANT& source);
  static VariantValue OfText(std::string_view text);
  static VariantValue OfBoolean(bool truth) noexcept;
  static VariantValue OfInteger(std::int16_t number) noexcept;
  /// Creates an object value; null means Nothing.
  static VariantValue OfObject(ComPointer<IDispatch> object) noexcept;

  VARIANT& Get() noexcept { return value_; }
  const VARIANT& Get() const noexcept { return value_; }
  VARTYPE Type() const noexcept { return value_.vt; }
  /// Clears the value and returns where a call stores a new one.
  VARIANT* Receive() noexcept {
    VariantClear(&value_);
    return &value_;
  }
  /// Returns the value and gives up ownership; the caller must clear it.
  [[nodiscard]] VARIANT Detach() noexcept {
    const VARIANT given = value_;
    VariantInit(&value_);
    return given;
  }

  /// Returns the object's automation interface, or null if the value is not an object or has no such
  /// interface.
  ComPointer<IDispatch> Object() const noexcept;
  bool IsObject() const noexcept { return value_.vt == VT_DISPATCH || value_.vt == VT_UNKNOWN; }

 private:
  VARIANT value_;
};

/// Follows VT_BYREF | VT_VARIANT to the innermost value; returns null if the chain ends in null or never
/// ends.
const VARIANT* Followed(const VARIANT& value) noexcept;

}  // namespace krnqb::com
