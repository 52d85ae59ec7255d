#pragma once

#include <ole2.h>

#include <cstdint>
#include <string_view>
#include <type_traits>

#include "com/values/com_pointer.h"
#include "com/values/variant_value.h"
#include "krnqb/variant.h"

namespace krnqb::com {

// Values on their way out: each is put where a method leaves its result, for the caller to own.

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

/// An object; null is Nothing.
template <typename Object, typename Interface>
void Put(ComPointer<Object> object, Interface*& result) noexcept {
  result = object.Detach();
}
inline void Put(VariantValue value, VARIANT& result) noexcept {
  result = value.Detach();
}

/// An object of the component's as hosts see it: a host's own object is given back, an XML element is one of
/// the system's document model, a collection is a collection object. Null for Nothing, for what is no object,
/// and for an element when the system has no document model.
ComPointer<IDispatch> OutsideObject(const Variant& value);

}  // namespace krnqb::com
