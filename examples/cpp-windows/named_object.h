#pragma once

#include <vector>

#include "pointers.h"

/// An object that is called by the names of its members. Every call throws _com_error if it fails, with the
/// description that the object gives.
class NamedObject {
 public:
  explicit NamedObject(IDispatchPtr object) : object_(std::move(object)) {}

  _variant_t Get(const wchar_t* property) const;
  void Let(const wchar_t* property, const _variant_t& value) const;
  /// Assigns an object, as Visual Basic's Set does; null is Nothing.
  void Set(const wchar_t* property, IDispatch* object) const;
  _variant_t Call(const wchar_t* method, std::vector<_variant_t> arguments = {}) const;

  /// Returns the object itself.
  IDispatch* Object() const { return object_; }

 private:
  _variant_t Invoke(const wchar_t* name, WORD flags, std::vector<_variant_t>& arguments) const;

  IDispatchPtr object_;
};
