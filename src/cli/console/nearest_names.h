#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::cli {

/// How many characters must be put in, taken out, replaced or swapped with the next to make one text of the
/// other, letter case aside.
std::size_t EditDistance(std::string_view first, std::string_view second);

/// The names that a person who typed `typed` may have meant, nearest first, at most three: those that begin
/// with it or contain it, and those of which at most a third must be changed.
std::vector<std::string> NearestNames(std::string_view typed, std::span<const std::string> names);

/// "A", "A or B", "A, B or C", each in double quotes; empty for no name.
std::string AlternativesText(std::span<const std::string> names);

}  // namespace krnqb::cli
