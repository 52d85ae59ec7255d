#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace krnqb {

/// Returns the line, counted from 1, of the first start tag with more than `most` attributes, or nothing if
/// no tag has more. The text must be in an encoding that contains ASCII; it need not be well-formed. The XML
/// library compares each attribute of a tag with every other one before it calls a handler, so a tag with
/// very many has to be found before it is parsed.
std::optional<long> FindCrowdedTag(std::string_view text, std::size_t most);

}  // namespace krnqb
