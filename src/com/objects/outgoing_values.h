#pragma once

#include <ole2.h>

#include <cstdint>
#include <string_view>
#include <type_traits>

#include "com/values/com_pointer.h"
#include "com/values/variant_value.h"
#include "krnqb/variant.h"

namespace krnqb::com {

// Conversions of outgoing values: each is stored in a method's result, which the caller owns.

inline void Put(bool truth, VARIANT_BOOL& result) noexcept {
  result = truth ? VARIANT_TRUE : VARIANT_FALSE;
}
inline void Put(std::int16_t number, short& result) noexcept {
  result = number;
}
inline void Put(std::int32_t number, long& result) noexcept {
  result = number;
}
inline void Put(double number, double& result) noexcept {
  result = number;
}
void Put(std::string_view text, BSTR& result);
void Put(const Variant& value, VARIANT& result);

template <typename Inside, typename Outside>
  requires(std::is_enum_v<Inside> && std::is_enum_v<Outside>)
void Put(Inside value, Outside& result) noexcept {
  result = static_cast<Outside>(value);
}

/// Stores an object; null means Nothing.
template <typename Object, typename Interface>
void Put(ComPointer<Object> object, Interface*& result) noexcept {
  result = object.Detach();
}
inline void Put(VariantValue value, VARIANT& result) noexcept {
  result = value.Detach();
}

/// Returns one of the component's objects as hosts see it: a host's own object itself, an XML element as an
/// element of the system's document model, a collection as a collection object. Returns null for Nothing, for
/// a value that is not an object, and for an element if the system has no document model.
ComPointer<IDispatch> OutsideObject(const Variant& value);

}  // namespace krnqb::com
