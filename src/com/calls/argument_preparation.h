#pragma once

#include <ole2.h>

#include <deque>
#include <optional>
#include <vector>

#include "com/values/variant_value.h"

namespace krnqb::com {

/// Thrown for a call that does not fit the member it is for.
struct CallFault {
  HRESULT result;
  std::optional<UINT> argument = std::nullopt;  ///< the one at fault, counted as in the caller's array
};

/// A late-bound call made ready for ITypeInfo::Invoke: one argument of exactly the declared type for each
/// declared parameter. Callers leave out and name arguments, and pass values and references of other types;
/// all of that ends here.
class PreparedCall {
 public:
  /// Follows what `information` says of the member. Throws CallFault when the call does not fit it.
  /// `arguments` outlives the call.
  PreparedCall(ITypeInfo& information, DISPID member, WORD flags, LCID locale, const DISPPARAMS& arguments);

  /// The flags that the member answers to.
  WORD Flags() const noexcept { return invokeFlags; }
  /// The prepared arguments, valid while this object lives.
  DISPPARAMS* Arguments() noexcept { return &prepared; }

  /// After the call: gives what by-reference parameters hold now back to the caller's variables. Throws
  /// CallFault when a variable's type cannot take it.
  void WriteBack();

 private:
  struct Parameter;
  struct Supplied {
    const VARIANT* value = nullptr;  // null: left out
    UINT index = 0;                  // in the caller's array
  };
  // The local that a by-reference parameter uses, and the caller's variable.
  struct Reference {
    VariantValue local;
    Supplied supplied;
  };

  static std::vector<Supplied> Assign(const DISPPARAMS& arguments, std::size_t parameterCount, bool isPut);
  VariantValue Prepare(const Parameter& parameter, const Supplied& supplied);
  VariantValue ValueFor(const Parameter& parameter, const Supplied& supplied) const;
  VariantValue Converted(const VARIANT& source, VARTYPE type, UINT index) const;

  LCID localeId;
  WORD invokeFlags = 0;
  std::vector<VariantValue> values;
  std::vector<VARIANT> borrowed;  // `values` in the order of DISPPARAMS
  std::deque<Reference> references;
  DISPID putValue = DISPID_PROPERTYPUT;
  DISPPARAMS prepared{};
};

}  // namespace krnqb::com
