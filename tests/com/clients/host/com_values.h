#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <utility>

namespace krnqb::testing {

/// A counted reference to a COM object.
template <typename Interface>
class Held {
 public:
  Held() noexcept = default;
  /// Takes ownership of the reference.
  explicit Held(Interface* pointer) noexcept : pointer_(pointer) {}
  Held(const Held& other) noexcept : pointer_(other.pointer_) {
    if (pointer_ != nullptr) pointer_->AddRef();
  }
  Held(Held&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  Held& operator=(Held other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~Held() { Reset(); }

  static Held Sharing(Interface* shared) {
    if (shared != nullptr) shared->AddRef();
    return Held(shared);
  }

  void Reset() {
    if (Interface* dropped = std::exchange(pointer_, nullptr)) dropped->Release();
  }
  Interface* Get() const noexcept { return pointer_; }
  Interface* operator->() const noexcept { return pointer_; }
  explicit operator bool() const noexcept { return pointer_ != nullptr; }

  /// For results: releases the current reference.
  Interface** Receive() {
    Reset();
    return &pointer_;
  }
  void** ReceiveAny() { return reinterpret_cast<void**>(Receive()); }

  /// Returns another interface of the same object, or null if it has none.
  template <typename Other>
  Held<Other> As() const {
    Held<Other> other;
    if (pointer_ != nullptr) pointer_->QueryInterface(__uuidof(Other), other.ReceiveAny());
    return other;
  }

 private:
  Interface* pointer_ = nullptr;
};

/// A text as automation passes it.
class Text {
 public:
  Text() noexcept = default;
  Text(std::wstring_view text) : owned_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  Text(const wchar_t* text) : Text(std::wstring_view(text)) {}
  Text(const Text&) = delete;
  Text(Text&& other) noexcept : owned_(std::exchange(other.owned_, nullptr)) {}
  Text& operator=(const Text&) = delete;
  Text& operator=(Text&&) = delete;
  ~Text() { SysFreeString(owned_); }

  BSTR Get() const noexcept { return owned_; }
  BSTR* Receive() {
    SysFreeString(std::exchange(owned_, nullptr));
    return &owned_;
  }
  std::wstring_view View() const { return {owned_ == nullptr ? L"" : owned_, SysStringLen(owned_)}; }

 private:
  BSTR owned_ = nullptr;
};

/// A VARIANT that clears itself.
class Value {
 public:
  Value() noexcept { VariantInit(&owned_); }
  Value(const wchar_t* text) : Value(std::wstring_view(text)) {}
  Value(std::wstring_view text) : Value() {
    owned_.vt = VT_BSTR;
    owned_.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  }
  Value(bool truth) : Value() {
    owned_.vt = VT_BOOL;
    owned_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
  }
  Value(short number) : Value() {
    owned_.vt = VT_I2;
    owned_.iVal = number;
  }
  Value(int number) : Value() {
    owned_.vt = VT_I4;
    owned_.lVal = number;
  }
  Value(long number) : Value(static_cast<int>(number)) {}
  Value(double number) : Value() {
    owned_.vt = VT_R8;
    owned_.dblVal = number;
  }
  Value(IDispatch* object) : Value() {
    owned_.vt = VT_DISPATCH;
    owned_.pdispVal = object;
    if (object != nullptr) object->AddRef();
  }
  Value(const Value& other) : Value() { VariantCopy(&owned_, const_cast<VARIANT*>(&other.owned_)); }
  Value(Value&& other) noexcept : Value() { std::swap(owned_, other.owned_); }
  Value& operator=(Value other) noexcept {
    std::swap(owned_, other.owned_);
    return *this;
  }
  ~Value() { VariantClear(&owned_); }

  /// An argument omitted in the middle of a call.
  static Value Missing() {
    Value missing;
    missing.owned_.vt = VT_ERROR;
    missing.owned_.scode = DISP_E_PARAMNOTFOUND;
    return missing;
  }
  /// A caller's variable; `variable` must outlive the value.
  static Value Reference(Value& variable) {
    Value reference;
    reference.owned_.vt = VT_BYREF | VT_VARIANT;
    reference.owned_.pvarVal = &variable.owned_;
    return reference;
  }
  static Value Null() {
    Value null;
    null.owned_.vt = VT_NULL;
    return null;
  }

  VARTYPE Type() const noexcept { return owned_.vt; }
  bool IsEmpty() const noexcept { return owned_.vt == VT_EMPTY; }
  const VARIANT& Raw() const noexcept { return owned_; }
  VARIANT* Receive() {
    VariantClear(&owned_);
    return &owned_;
  }
  std::wstring AsText() const {
    return owned_.vt == VT_BSTR
               ? std::wstring(owned_.bstrVal == nullptr ? L"" : owned_.bstrVal, SysStringLen(owned_.bstrVal))
               : L"(no text)";
  }
  long AsLong() const {
    switch (owned_.vt) {
      case VT_I2:
        return owned_.iVal;
      case VT_I4:
        return owned_.lVal;
      case VT_BOOL:
        return owned_.boolVal;
      default:
        return -99999;
    }
  }
  double AsDouble() const { return owned_.vt == VT_R8 ? owned_.dblVal : -99999; }
  Held<IDispatch> AsObject() const {
    return owned_.vt == VT_DISPATCH ? Held<IDispatch>::Sharing(owned_.pdispVal) : Held<IDispatch>();
  }

 private:
  VARIANT owned_;
};

}  // namespace krnqb::testing
