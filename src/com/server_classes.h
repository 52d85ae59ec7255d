#pragma once

#include <unknwn.h>

#include <span>

#include "com/values/com_pointer.h"

namespace krnqb::com {

/// The names under which hosts create the classes.
namespace program_name {
inline constexpr const wchar_t* exchange = L"KRN6_QB2002.QBDataExchange";
inline constexpr const wchar_t* subtotals = L"KRN6_QB2002.cSubtotals";
}  // namespace program_name

/// A class that hosts create.
struct ServerClass {
  const CLSID& classId;
  const wchar_t* programName;  ///< without a version
  const wchar_t* description;
  ComPointer<IUnknown> (*create)();
};

/// All of them.
std::span<const ServerClass> ServerClasses() noexcept;

}  // namespace krnqb::com
