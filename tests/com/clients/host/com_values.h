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
  /// Takes the reference over.
  explicit Held(Interface* taken) noexcept : pointer(taken) {}
  Held(const Held& other) noexcept : pointer(other.pointer) {
    if (pointer != nullptr) pointer->AddRef();
  }
  Held(Held&& other) noexcept : pointer(std::exchange(other.pointer, nullptr)) {}
  Held& operator=(Held other) noexcept {
    std::swap(pointer, other.pointer);
    return *this;
  }
  ~Held() { Reset(); }

  static Held Sharing(Interface* shared) {
    if (shared != nullptr) shared->AddRef();
    return Held(shared);
  }

  void Reset() {
    if (Interface* dropped = std::exchange(pointer, nullptr)) dropped->Release();
  }
  Interface* Get() const noexcept { return pointer; }
  Interface* operator->() const noexcept { return pointer; }
  explicit operator bool() const noexcept { return pointer != nullptr; }

  /// For results: drops what was held.
  Interface** Receive() {
    Reset();
    return &pointer;
  }
  void** ReceiveAny() { return reinterpret_cast<void**>(Receive()); }

  /// Another interface of the same object; nothing when it has none.
  template <typename Other>
  Held<Other> As() const {
    Held<Other> other;
    if (pointer != nullptr) pointer->QueryInterface(__uuidof(Other), other.ReceiveAny());
    return other;
  }

 private:
  Interface* pointer = nullptr;
};

/// A text as automation passes it.
class Text {
 public:
  Text() noexcept = default;
  Text(std::wstring_view text) : owned(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  Text(const wchar_t* text) : Text(std::wstring_view(text)) {}
  Text(const Text&) = delete;
  Text(Text&& other) noexcept : owned(std::exchange(other.owned, nullptr)) {}
  Text& operator=(const Text&) = delete;
  Text& operator=(Text&&) = delete;
  ~Text() { SysFreeString(owned); }

  BSTR Get() const noexcept { return owned; }
  BSTR* Receive() {
    SysFreeString(std::exchange(owned, nullptr));
    return &owned;
  }
  std::wstring_view View() const { return {owned == nullptr ? L"" : owned, SysStringLen(owned)}; }

 private:
  BSTR owned = nullptr;
};

/// A VARIANT that clears itself.
class Value {
 public:
  Value() noexcept { VariantInit(&owned); }
  Value(const wchar_t* text) : Value(std::wstring_view(text)) {}
  Value(std::wstring_view text) : Value() {
    owned.vt = VT_BSTR;
    owned.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  }
  Value(bool truth) : Value() {
    owned.vt = VT_BOOL;
    owned.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
  }
  Value(short number) : Value() {
    owned.vt = VT_I2;
    owned.iVal = number;
  }
  Value(int number) : Value() {
    owned.vt = VT_I4;
    owned.lVal = number;
  }
  Value(long number) : Value(static_cast<int>(number)) {}
  Value(double number) : Value() {
    owned.vt = VT_R8;
    owned.dblVal = number;
  }
  Value(IDispatch* object) : Value() {
    owned.vt = VT_DISPATCH;
    owned.pdispVal = object;
    if (object != nullptr) object->AddRef();
  }
  Value(const Value& other) : Value() { VariantCopy(&owned, const_cast<VARIANT*>(&other.owned)); }
  Value(Value&& other) noexcept : Value() { std::swap(owned, other.owned); }
  Value& operator=(Value other) noexcept {
    std::swap(owned, other.owned);
    return *this;
  }
  ~Value() { VariantClear(&owned); }

  /// An argument that a caller leaves out in the middle.
  static Value Missing() {
    Value missing;
    missing.owned.vt = VT_ERROR;
    missing.owned.scode = DISP_E_PARAMNOTFOUND;
    return missing;
  }
  /// A caller's variable; `variable` outlives the value.
  static Value Reference(Value& variable) {
    Value reference;
    reference.owned.vt = VT_BYREF | VT_VARIANT;
    reference.owned.pvarVal = &variable.owned;
    return reference;
  }
  static Value Null() {
    Value null;
    null.owned.vt = VT_NULL;
    return null;
  }

  VARTYPE Type() const noexcept { return owned.vt; }
  bool IsEmpty() const noexcept { return owned.vt == VT_EMPTY; }
  const VARIANT& Raw() const noexcept { return owned; }
  VARIANT* Receive() {
    VariantClear(&owned);
    return &owned;
  }
  std::wstring AsText() const {
    return owned.vt == VT_BSTR
               ? std::wstring(owned.bstrVal == nullptr ? L"" : owned.bstrVal, SysStringLen(owned.bstrVal))
               : L"(no text)";
  }
  long AsLong() const {
    switch (owned.vt) {
      case VT_I2:
        return owned.iVal;
      case VT_I4:
        return owned.lVal;
      case VT_BOOL:
        return owned.boolVal;
      default:
        return -99999;
    }
  }
  double AsDouble() const { return owned.vt == VT_R8 ? owned.dblVal : -99999; }
  Held<IDispatch> AsObject() const {
    return owned.vt == VT_DISPATCH ? Held<IDispatch>::Sharing(owned.pdispVal) : Held<IDispatch>();
  }

 private:
  VARIANT owned;
};

}  // namespace krnqb::testing
