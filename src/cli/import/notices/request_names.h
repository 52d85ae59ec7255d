#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "krnqb/observer.h"

namespace krnqb::cli {

/// Returns what a request asks for, such as "bills", or an empty text if the number is unknown.
std::string_view RequestName(std::int32_t number) noexcept;

/// Returns a request and its period as text for people: "request 10 (bills) for 2002-01-01 to 2002-01-31".
std::string RequestText(const Place& place);

}  // namespace krnqb::cli
