#pragma once

#include <string>
#include <string_view>

namespace krnqb::profit_and_loss {

/// Returns a text without blanks, tabs, line ends and no-break spaces at its ends.
std::string_view Trimmed(std::string_view text) noexcept;

/// Returns a text with ASCII letters in lower case, for comparing.
std::string Folded(std::string_view text);

/// Returns whether two texts are equal if the case of ASCII letters is ignored.
bool SameText(std::string_view left, std::string_view right) noexcept;

/// Returns whether a text begins with a beginning if the case of ASCII letters is ignored.
bool BeginsWith(std::string_view text, std::string_view beginning) noexcept;

/// Returns whether a text contains another one, given in lower case, if the case of ASCII letters is ignored.
bool Contains(std::string_view text, std::string_view part);

}  // namespace krnqb::profit_and_loss
