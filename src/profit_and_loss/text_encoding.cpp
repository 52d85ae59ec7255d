#include "profit_and_loss/text_encoding.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "profit_and_loss/messages.h"
#include "profit_and_loss/words.h"

namespace krnqb::profit_and_loss {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view csvAdvice = "save the report as CSV (UTF-8) and give that file";

struct Signature {
  std::string_view bytes;
  std::string_view meaning;
};

constexpr std::array signatures{
    Signature{"\xD0\xCF\x11\xE0"sv, "the document is a spreadsheet, not a text"},
    Signature{"PK\x03\x04"sv, "the document is a spreadsheet or an archive, not a text"},
    Signature{"%PDF-"sv, "the document is a PDF file, not a text"},
    Signature{"\xFF\xFE"sv, "the document is in UTF-16"},
    Signature{"\xFE\xFF"sv, "the document is in UTF-16"},
};

// The characters of bytes 80 to 9F in Windows-1252; 0 for a byte that has none.
constexpr std::array<char16_t, 32> windowsCharacters = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

unsigned char Byte(char character) noexcept {
  return static_cast<unsigned char>(character);
}

// Returns the length of the well-formed UTF-8 sequence at the beginning of a text; 0 if no sequence is there.
std::size_t SequenceLength(std::string_view text) noexcept {
  const unsigned char first = Byte(text.front());
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4) return 0;
  const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (text.size() < length) return 0;
  for (std::size_t index = 1; index < length; ++index) {
    if ((Byte(text[index]) & 0xC0U) != 0x80U) return 0;
  }
  const unsigned char second = Byte(text[1]);
  const bool overlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
  const bool surrogate = first == 0xED && second >= 0xA0;
  const bool beyond = first == 0xF4 && second >= 0x90;
  return overlong || surrogate || beyond ? 0 : length;
}

bool IsUtf8(std::string_view text) noexcept {
  while (!text.empty()) {
    const std::size_t length = SequenceLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

void AppendUtf8(std::string& text, char16_t character) {
  if (character < 0x800) {
    text += static_cast<char>(0xC0 | (character >> 6));
  } else {
    text += static_cast<char>(0xE0 | (character >> 12));
    text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
  }
  text += static_cast<char>(0x80 | (character & 0x3F));
}

// Returns nullopt if a byte has no character in Windows-1252.
std::optional<std::string> FromWindows1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char byte : bytes) {
    const unsigned char code = Byte(byte);
    if (code < 0x80) {
      text += byte;
      continue;
    }
    const char16_t character = code < 0xA0 ? windowsCharacters.at(code - 0x80U) : char16_t{code};
    if (character == 0) return std::nullopt;
    AppendUtf8(text, character);
  }
  return text;
}

bool IsTextByte(char byte) noexcept {
  return Byte(byte) >= 0x20 ? byte != '\x7F' : byte == '\t' || byte == '\n' || byte == '\r' || byte == '\f';
}

void RefuseControlCharacters(std::string_view document, std::string_view bytes) {
  const auto* const found = std::ranges::find_if_not(bytes, IsTextByte);
  if (found == bytes.end()) return;
  const auto line = 1 + std::count(bytes.begin(), found, '\n');
  Refuse(fmt::format("{}: line {}", document, line),
         fmt::format("the document is not a text: it contains byte {:02X}", Byte(*found)), csvAdvice);
}

}  // namespace

std::string DocumentText(std::string_view document, std::string_view bytes) {
  for (const Signature& signature : signatures) {
    if (bytes.starts_with(signature.bytes)) Refuse(document, signature.meaning, csvAdvice);
  }
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
  // Old programs end a text file with this character.
  if (bytes.ends_with('\x1A')) bytes.remove_suffix(1);
  RefuseControlCharacters(document, bytes);
  if (Trimmed(bytes).empty())
    Refuse(document, "the document is empty", "export the profit and loss again and give that file");
  if (IsUtf8(bytes)) return std::string(bytes);
  std::optional<std::string> text = FromWindows1252(bytes);
  if (!text) Refuse(document, "the document is neither in UTF-8 nor in Windows-1252", csvAdvice);
  return *std::move(text);
}

}  // namespace krnqb::profit_and_loss
