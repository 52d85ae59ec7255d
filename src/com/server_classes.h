#pragma once

#include <span>

#include "com/registration/server_class.h"

namespace krnqb::com {

/// The programmatic identifiers of the creatable classes.
namespace program_name {
inline constexpr const wchar_t* exchange = L"KRN6_QB2002.QBDataExchange";
inline constexpr const wchar_t* subtotals = L"KRN6_QB2002.cSubtotals";
}  // namespace program_name

/// Returns every class that hosts can create.
std::span<const ServerClass> ServerClasses() noexcept;

}  // namespace krnqb::com
