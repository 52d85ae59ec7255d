#pragma once

#include <string>
#include <vector>

#include "host/com_values.h"

namespace krnqb::testing {

/// The outcome of a late-bound call.
struct Outcome {
  HRESULT result = S_OK;
  Value value;
  EXCEPINFO exception{};      ///< its texts are freed, see `description`
  std::wstring description;   ///< of the exception
  UINT wrongArgument = 4711;  ///< as set by the callee; 4711 if it did not set it
};

/// An argument passed by name.
struct NamedValue {
  const wchar_t* name;
  Value value;
};

/// Calls an object late-bound, as scripts and Visual Basic's Object variables do.
class LateBound {
 public:
  LateBound() = default;
  explicit LateBound(Held<IDispatch> object) : object_(std::move(object)) {}
  template <typename Interface>
  explicit LateBound(const Held<Interface>& object) : object_(object.template As<IDispatch>()) {}

  IDispatch* Get() const { return object_.Get(); }
  explicit operator bool() const { return static_cast<bool>(object_); }
  void Reset() { object_.Reset(); }

  /// Returns the dispid of a member; DISPID_UNKNOWN if it is missing.
  DISPID Member(const wchar_t* name) const;

  Outcome Read(const wchar_t* name, std::vector<Value> arguments = {}) const;
  Outcome Call(const wchar_t* name, std::vector<Value> arguments = {}) const;
  Outcome Let(const wchar_t* name, Value value) const;
  Outcome Set(const wchar_t* name, Value value) const;
  Outcome LetAt(const wchar_t* name, Value index, Value value) const;

  /// Calls a method with positional arguments, then named ones.
  Outcome CallNamed(const wchar_t* name, std::vector<Value> positional, std::vector<NamedValue> named) const;

  /// The raw call: arguments in IDispatch order, that is, reversed.
  Outcome Invoke(DISPID member, WORD flags, std::vector<Value> reversed, std::vector<DISPID> named = {},
                 REFIID reserved = IID_NULL) const;

 private:
  Outcome InvokeInOrder(const wchar_t* name, WORD flags, std::vector<Value> arguments,
                        std::vector<DISPID> named = {}) const;

  Held<IDispatch> object_;
};

}  // namespace krnqb::testing
