#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "krnqb/observer.h"

namespace krnqb::cli {

/// What a request of the catalogue asks for, such as "bills"; empty for an unknown number.
std::string_view RequestName(std::int32_t number) noexcept;

/// A request and its period for a person: "request 10 (bills) for 2002-01-01 to 2002-01-31".
std::string RequestText(const Place& place);

}  // namespace krnqb::cli
