#pragma once

#include <optional>
#include <string_view>

namespace krnqb::company {

enum class MarkupKind {
  StartTag,
  EmptyTag,  ///< of an element without content
  EndTag,
  Text,       ///< as written, with references
  PlainText,  ///< of a CDATA section, unescaped
  End         ///< of the input
};

/// A token of a document. For a tag, `text` is the name and the attributes, without the brackets.
struct Markup {
  MarkupKind kind;
  std::string_view text;
};

/// Splits the text of a well-formed element, as `XmlElement::Xml` returns it, into tokens. Skips comments and
/// processing instructions.
class MarkupReader {
 public:
  /// The text must outlive the reader and every token.
  explicit MarkupReader(std::string_view rest) noexcept : rest_(rest) {}

  Markup Next();
  /// Returns the next tag, or `End`; skips texts.
  Markup NextTag();

  /// If the element whose start tag was taken last contains text alone and ends in `</name>`, takes both and
  /// returns the text as written. Otherwise takes nothing and returns nullopt.
  std::optional<std::string_view> TakeContent(std::string_view name) noexcept;

 private:
  std::string_view TakeThrough(std::string_view begin, std::string_view end);
  Markup TakeEndTag();
  Markup TakeTag();

  std::string_view rest_;
};

}  // namespace krnqb::company
