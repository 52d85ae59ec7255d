#include "company/records/ascii.h"

#include <fmt/format.h>

#include <cstdint>
#include <iterator>

#include "company/records/errors.h"
#include "krnqb/error.h"
#include "xml/parser.h"

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

bool IsPlain(char character, Quotes quotes) {
  if (static_cast<unsigned char>(character) >= 0x80) return false;
  return quotes == Quotes::Keep || (character != '"' && character != '\'');
}

}  // namespace

void AppendAscii(std::string& output, std::string_view utf8, Quotes quotes) {
  while (!utf8.empty()) {
    std::size_t plain = 0;
    while (plain < utf8.size() && IsPlain(utf8[plain], quotes)) ++plain;
    output += utf8.substr(0, plain);
    utf8.remove_prefix(plain);
    if (utf8.empty()) return;
    if (static_cast<unsigned char>(utf8.front()) >= 0x80) {
      fmt::format_to(std::back_inserter(output), "&#{};", TakeCharacter(utf8));
    } else {
      output += utf8.front() == '"' ? "&quot;" : "&apos;";
      utf8.remove_prefix(1);
    }
  }
}

void AppendAsciiText(std::string& output, std::string_view utf8) {
  AppendAscii(output, EscapedXmlText(utf8), Quotes::Escape);
}

}  // namespace krnqb::company
