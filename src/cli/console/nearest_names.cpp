#include "cli/console/nearest_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "krnqb/keyed_collection.h"
#include "support/characters.h"

namespace krnqb::cli {
namespace {

constexpr std::size_t suggestionLimit = 3;

bool StartsCodePoint(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

// Distances count characters, not bytes: a wrong accent is one mistake.
std::vector<std::string> Characters(std::string_view text) {
  std::vector<std::string> characters;
  for (const char byte : text) {
    if (characters.empty() || StartsCodePoint(byte)) characters.emplace_back();
    characters.back() += byte;
  }
  return characters;
}

}  // namespace

std::size_t EditDistance(std::string_view first, std::string_view second) {
  const std::vector<std::string> from = Characters(FoldedKey(first));
  const std::vector<std::string> to = Characters(FoldedKey(second));
  std::vector<std::vector<std::size_t>> distances(from.size() + 1, std::vector<std::size_t>(to.size() + 1));
  for (std::size_t row = 0; row <= from.size(); ++row) distances[row][0] = row;
  for (std::size_t column = 0; column <= to.size(); ++column) distances[0][column] = column;
  for (std::size_t row = 1; row <= from.size(); ++row) {
    for (std::size_t column = 1; column <= to.size(); ++column) {
      const std::size_t mistake = from[row - 1] == to[column - 1] ? 0 : 1;
      std::size_t& distance = distances[row][column];
      distance = std::min({distances[row - 1][column] + 1, distances[row][column - 1] + 1,
                           distances[row - 1][column - 1] + mistake});
      const bool swapped =
          row > 1 && column > 1 && from[row - 1] == to[column - 2] && from[row - 2] == to[column - 1];
      if (swapped) distance = std::min(distance, distances[row - 2][column - 2] + 1);
    }
  }
  return distances.back().back();
}

std::vector<std::string> NearestNames(std::string_view typed, std::span<const std::string> names) {
  const std::string folded = FoldedKey(typed);
  std::vector<std::pair<std::size_t, std::string>> candidates;
  for (const std::string& name : names) {
    const std::size_t distance = EditDistance(typed, name);
    const bool contained = !folded.empty() && FoldedKey(name).find(folded) != std::string::npos;
    const std::size_t length = std::max(CharacterCount(typed), CharacterCount(name));
    if (contained || distance * 3 <= length) candidates.emplace_back(distance, name);
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  std::vector<std::string> nearest;
  for (const auto& [distance, name] : candidates) {
    if (nearest.size() == suggestionLimit) break;
    nearest.push_back(name);
  }
  return nearest;
}

std::string AlternativesText(std::span<const std::string> names) {
  std::string text;
  for (std::size_t index = 0; index < names.size(); ++index) {
    if (index > 0) text += index + 1 == names.size() ? " or " : ", ";
    text += fmt::format("\"{}\"", names[index]);
  }
  return text;
}

}  // namespace krnqb::cli
