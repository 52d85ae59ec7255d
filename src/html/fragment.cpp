#include "html/fragment.h"

#include "support/characters.h"

namespace krnqb::html {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

constexpr bool IsWithin(char32_t character, char32_t first, char32_t last) noexcept {
  return character >= first && character <= last;
}

bool ChangesDirection(char32_t character) noexcept {
  constexpr char32_t arabicLetterMark = 0x061C;
  return character == arabicLetterMark || IsWithin(character, 0x200E, 0x200F) ||
         IsWithin(character, 0x202A, 0x202E) || IsWithin(character, 0x2066, 0x2069);
}

// Browsers show noncharacters and surrogates in their own ways, or not at all.
bool IsUnwritable(char32_t character) noexcept {
  return character < U' ' || IsWithin(character, 0x7F, 0x9F) || IsWithin(character, 0x2028, 0x2029) ||
         IsWithin(character, 0xD800, 0xDFFF) || IsWithin(character, 0xFDD0, 0xFDEF) ||
         (character & 0xFFFEU) == 0xFFFEU || character > 0x10FFFF || ChangesDirection(character);
}

std::size_t LengthOf(char32_t character) noexcept {
  if (character < 0x80) return 1;
  if (character < 0x800) return 2;
  return character < 0x10000 ? 3 : 4;
}

void AppendEscaped(std::string& markup, char32_t character, std::string_view bytes) {
  switch (character) {
    case U'&':
      markup += "&amp;";
      return;
    case U'<':
      markup += "&lt;";
      return;
    case U'>':
      markup += "&gt;";
      return;
    case U'"':
      markup += "&quot;";
      return;
    case U'\'':
      markup += "&#39;";
      return;
    case U'\n':
    case U'\r':
    case U'\t':
      markup += ' ';
      return;
    default:
      markup += IsUnwritable(character) ? replacement : bytes;
  }
}

}  // namespace

/// Writes elements; the only one besides `Text` that makes fragments of texts.
struct ElementWriter {
  static std::string StartTag(std::string_view name, const Attributes& attributes) {
    std::string markup = "<";
    markup += name;
    for (const Attribute& attribute : attributes) {
      if (attribute.name.empty()) continue;
      markup.append(" ").append(attribute.name).append("=\"").append(Escaped(attribute.value)).append("\"");
    }
    return markup += '>';
  }

  static Fragment Whole(std::string_view name, const Attributes& attributes, const Fragment& content) {
    std::string markup = StartTag(name, attributes);
    markup.append(content.Markup()).append("</").append(name).append(">");
    return Fragment(std::move(markup));
  }

  static Fragment Empty(std::string_view name, const Attributes& attributes) {
    return Fragment(StartTag(name, attributes));
  }
};

std::string Escaped(std::string_view text) {
  std::string markup;
  markup.reserve(text.size());
  while (!text.empty()) {
    std::string_view rest = text;
    const char32_t character = TakeCharacter(rest);
    const std::string_view bytes = text.substr(0, text.size() - rest.size());
    // A character in more bytes than it needs is invalid.
    if (bytes.size() == LengthOf(character)) {
      AppendEscaped(markup, character, bytes);
    } else {
      markup += replacement;
    }
    text = rest;
  }
  return markup;
}

Fragment Text(std::string_view text) {
  return Fragment(Escaped(text));
}

Fragment Element(std::string_view name, const Attributes& attributes, const Fragment& content) {
  return ElementWriter::Whole(name, attributes, content);
}

Fragment Element(std::string_view name, const Fragment& content) {
  return ElementWriter::Whole(name, {}, content);
}

Fragment EmptyElement(std::string_view name, const Attributes& attributes) {
  return ElementWriter::Empty(name, attributes);
}

}  // namespace krnqb::html
