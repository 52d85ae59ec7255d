#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace krnqb::com {

/// Returns the number of the run-time error that automation knows a result by, such as 70 for E_ACCESSDENIED;
/// absent if the result has none, and is itself the number.
std::optional<std::int32_t> RunTimeErrorOf(HRESULT result) noexcept;

/// Returns the English text of a run-time error number, or the empty text for a number that is not a run-time
/// error.
std::string_view RunTimeErrorText(std::int32_t number) noexcept;

}  // namespace krnqb::com
