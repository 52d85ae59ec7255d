#pragma once

#include <string_view>

namespace krnqb::company {

enum class MarkupKind {
  StartTag,
  EmptyTag,  ///< an element without content
  EndTag,
  Text,       ///< as it is written, references and all
  PlainText,  ///< of a CDATA section, nothing escaped
  End         ///< there is no more
};

/// A piece of a document. Of a tag, `text` is what stands between the brackets: the name, and any attributes.
struct Markup {
  MarkupKind kind;
  std::string_view text;
};

/// Cuts the text of a well-formed element, as `XmlElement::Xml` gives it, into its pieces. Comments and
/// processing instructions are left out.
class MarkupReader {
 public:
  /// The text must outlive the reader and every piece.
  explicit MarkupReader(std::string_view xml) noexcept : rest_(xml) {}

  Markup Next();

 private:
  std::string_view TakeThrough(std::string_view begin, std::string_view end);
  Markup TakeTag();

  std::string_view rest_;
};

}  // namespace krnqb::company
