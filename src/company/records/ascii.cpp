#include "company/records/ascii.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "company/records/errors.h"
#include "krnqb/error.h"

namespace krnqb::company {
namespace {

// Returns the number of bytes that follow a lead byte; 0 if it is not a lead byte.
std::size_t FollowingBytes(unsigned char first) {
  if (first >= 0xC2 && first <= 0xDF) return 1;
  if (first >= 0xE0 && first <= 0xEF) return 2;
  if (first >= 0xF0 && first <= 0xF4) return 3;
  return 0;
}

// Removes and returns the non-ASCII character at the front of a text.
std::uint32_t TakeCharacter(std::string_view& utf8) {
  const auto first = static_cast<unsigned char>(utf8.front());
  const std::size_t following = FollowingBytes(first);
  if (following == 0 || utf8.size() <= following)
    throw Error(company_error::cannotParse, "a text is not valid UTF-8");
  std::uint32_t character = first & (0x3FU >> following);
  for (std::size_t position = 1; position <= following; ++position) {
    const auto byte = static_cast<unsigned char>(utf8[position]);
    if ((byte & 0xC0U) != 0x80U) throw Error(company_error::cannotParse, "a text is not valid UTF-8");
    character = character << 6U | (byte & 0x3FU);
  }
  utf8.remove_prefix(following + 1);
  return character;
}

// The references to characters that a text or an attribute cannot contain. This is asked for every character
// of every record.
class References {
 public:
  struct Entry {
    char character;
    std::string_view reference;
  };

  template <std::size_t Count>
  constexpr explicit References(const std::array<Entry, Count>& entries) {
    for (std::size_t code = 0x80; code < isSpecial_.size(); ++code) isSpecial_.at(code) = true;
    for (std::size_t place = 0; place < Count; ++place) {
      entries_.at(place) = entries.at(place);
      isSpecial_.at(static_cast<unsigned char>(entries.at(place).character)) = true;
    }
  }

  bool IsSpecial(char character) const noexcept {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-bounds-constant-array-index)
    return isSpecial_[static_cast<unsigned char>(character)];
  }
  /// Returns an empty text for a character that is not ASCII.
  std::string_view To(char character) const noexcept {
    const auto* const entry = std::ranges::find(entries_, character, &Entry::character);
    return entry == entries_.end() ? std::string_view() : entry->reference;
  }

 private:
  std::array<bool, 256> isSpecial_{};
  std::array<Entry, 7> entries_{};
};

using Entry = References::Entry;
constexpr References textReferences(std::array{Entry{'&', "&amp;"}, Entry{'<', "&lt;"}, Entry{'>', "&gt;"},
                                               Entry{'"', "&quot;"}, Entry{'\'', "&apos;"}});
constexpr References attributeReferences(std::array{
    Entry{'&', "&amp;"}, Entry{'<', "&lt;"}, Entry{'>', "&gt;"}, Entry{'"', "&quot;"}, Entry{'\n', "&#10;"},
    Entry{'\t', "&#9;"}, Entry{'\r', "&#13;"}});

void Append(std::string& output, std::string_view utf8, const References& references) {
  for (;;) {
    const char* const end = utf8.data() + utf8.size();
    const char* const special =
        std::find_if(utf8.data(), end, [&](char character) { return references.IsSpecial(character); });
    output.append(utf8.data(), special);
    if (special == end) return;
    utf8.remove_prefix(static_cast<std::size_t>(special - utf8.data()));
    if (const std::string_view reference = references.To(*special); !reference.empty()) {
      output += reference;
      utf8.remove_prefix(1);
    } else {
      fmt::format_to(std::back_inserter(output), "&#{};", TakeCharacter(utf8));
    }
  }
}

}  // namespace

void AppendAsciiText(std::string& output, std::string_view utf8) {
  Append(output, utf8, textReferences);
}

void AppendAsciiAttribute(std::string& output, std::string_view utf8) {
  Append(output, utf8, attributeReferences);
}

}  // namespace krnqb::company
