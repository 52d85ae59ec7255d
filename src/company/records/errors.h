#pragma once

#include <cstdint>

namespace krnqb::company::company_error {

// Error numbers of company files, the same as those of QuickBooks' request processor.

inline constexpr std::int32_t cannotParse =
    -2147220480;  ///< 80040400: the request or document cannot be parsed
inline constexpr std::int32_t unexpected = -2147220478;  ///< 80040402: the operation is not possible now
inline constexpr std::int32_t cannotOpen = -2147220472;  ///< 80040408: the company file cannot be used
inline constexpr std::int32_t noCompanyOpen =
    -2147220458;  ///< 80040416: no company file is given and none is open

inline constexpr std::int32_t fileAlreadyExists = 58;  ///< run-time error: the new file already exists

}  // namespace krnqb::company::company_error
