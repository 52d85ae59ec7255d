#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::cli {

/// Returns the number of characters to insert, remove, replace or swap with their neighbour to turn one text
/// into the other. Case-insensitive.
std::size_t EditDistance(std::string_view first, std::string_view second);

/// Returns at most three names that the user may have meant by `typed`, nearest first: those that contain it,
/// and those of which at most a third of the characters differ.
std::vector<std::string> NearestNames(std::string_view typed, std::span<const std::string> names);

/// Returns "A", "A or B" or "A, B or C", each name in double quotes; empty without names.
std::string AlternativesText(std::span<const std::string> names);

}  // namespace krnqb::cli
