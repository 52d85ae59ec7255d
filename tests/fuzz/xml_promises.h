#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "fuzz/promise.h"
#include "xml/parser.h"

namespace krnqb::fuzz {

/// Ends the process unless a text is a well-formed document; returns its element.
inline XmlElement RequireDocument(const std::string& text, std::string_view promise) {
  XmlParseResult parsed = ParseXmlText(text);
  Require(!parsed.fault, promise, parsed.fault ? parsed.fault->message + "\n" + text : text);
  return parsed.element;
}

/// Ends the process unless an element's text can be parsed again and is then written in the same way.
inline void RequireRoundTrip(const XmlElement& element) {
  const std::string text = element.Xml();
  const std::string again = RequireDocument(text, "an element's text is a document").Xml();
  Require(again == text, "an element's text is parsed as what it was", text + "\n" + again);
}

/// Returns whether a text is ASCII.
inline bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text,
                             [](char character) { return static_cast<unsigned char>(character) < 0x80; });
}

}  // namespace krnqb::fuzz
