#pragma once

#include <ole2.h>

#include <deque>
#include <optional>
#include <vector>

#include "com/values/variant_value.h"

namespace krnqb::com {

/// Thrown if a call does not match the member it addresses.
struct CallFault {
  HRESULT result;
  std::optional<UINT> argument = std::nullopt;  ///< the offending one, as an index into the caller's array
};

/// A late-bound call prepared for ITypeInfo::Invoke: one argument of exactly the declared type for each
/// declared parameter. Resolves omitted and named arguments, and converts values and references of other
/// types.
class PreparedCall {
 public:
  /// Prepares the arguments as `information` declares the member. Throws CallFault if the call does not match
  /// the declaration. `arguments` must outlive the call.
  PreparedCall(ITypeInfo& information, DISPID member, WORD flags, LCID localeId, const DISPPARAMS& arguments);

  /// Returns the invocation flags that the member accepts.
  WORD Flags() const noexcept { return invokeFlags_; }
  /// Returns the prepared arguments, valid for the lifetime of this object.
  DISPPARAMS* Arguments() noexcept { return &prepared_; }

  /// Copies the values of by-reference parameters back to the caller's variables after the call. Throws
  /// CallFault if a value cannot be converted to its variable's type.
  void WriteBack();

 private:
  struct Parameter;
  struct Supplied {
    const VARIANT* value = nullptr;  // null: omitted
    UINT index = 0;                  // in the caller's array
  };
  // The local variable bound to a by-reference parameter, and the caller's argument.
  struct Reference {
    VariantValue local;
    Supplied supplied;
  };

  static std::vector<Supplied> Assign(const DISPPARAMS& arguments, std::size_t parameterCount, bool isPut);
  VariantValue Prepare(const Parameter& parameter, const Supplied& supplied);
  VariantValue ValueFor(const Parameter& parameter, const Supplied& supplied) const;
  VariantValue Converted(const VARIANT& source, VARTYPE type, UINT index) const;

  LCID localeId_;
  WORD invokeFlags_ = 0;
  std::vector<VariantValue> values_;
  std::vector<VARIANT> borrowed_;  // `values_` in the order of DISPPARAMS
  std::deque<Reference> references_;
  DISPID putValue_ = DISPID_PROPERTYPUT;
  DISPPARAMS prepared_{};
};

}  // namespace krnqb::com
