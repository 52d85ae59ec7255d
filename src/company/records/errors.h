#pragma once

#include <cstdint>

namespace krnqb::company::company_error {

// What a company file refuses, in the numbers that QuickBooks' request processor uses for it.

inline constexpr std::int32_t cannotParse =
    -2147220480;  ///< 80040400: a request or document that cannot be parsed
inline constexpr std::int32_t unexpected = -2147220478;  ///< 80040402: an operation that cannot be done now
inline constexpr std::int32_t cannotOpen = -2147220472;  ///< 80040408: the company file cannot be used
inline constexpr std::int32_t noCompanyOpen =
    -2147220458;  ///< 80040416: no company was named, and none is open

inline constexpr std::int32_t fileAlreadyExists =
    58;  ///< a run-time error: a new file must not replace another

}  // namespace krnqb::company::company_error
