#pragma once

#include <unknwn.h>

#include <span>

namespace krnqb::com {

/// A class that hosts can create, as the registry knows it.
struct ComponentClass {
  const CLSID& classId;
  const wchar_t* programName;  ///< without a version
  const wchar_t* description;
};

/// The programmatic identifiers of the creatable classes.
namespace program_name {
inline constexpr const wchar_t* exchange = L"KRN6_QB2002.QBDataExchange";
inline constexpr const wchar_t* subtotals = L"KRN6_QB2002.cSubtotals";
}  // namespace program_name

const ComponentClass& ExchangeClass() noexcept;
const ComponentClass& SubtotalsClass() noexcept;

/// Returns every class that hosts can create.
std::span<const ComponentClass> ComponentClasses() noexcept;

}  // namespace krnqb::com
