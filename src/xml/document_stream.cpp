#include "xml/document_stream.h"

#include <libxml/parser.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "xml/strict_parser.h"

namespace krnqb {
namespace {

// Passes on what the library reports.
class Passing {
 public:
  explicit Passing(XmlStreamHandler& handler) noexcept : handler_(handler) {}

  void Install(StrictParser& parser) {
    parser.Subject(this);
    xmlSAXHandler& handlers = parser.Handlers();
    handlers.startElementNs = Start;
    handlers.endElementNs = [](void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
      To(context, [](Passing& passing) { passing.handler_.EndElement(); });
    };
    handlers.characters = Text;
    handlers.ignorableWhitespace = Text;
    handlers.cdataBlock = Text;
    handlers.comment = IgnoreComment;
    handlers.processingInstruction = nullptr;
    handlers.reference = nullptr;
  }

 private:
  template <typename Call>
  static void To(void* context, Call&& call) noexcept {
    StrictParser::Of(context).ForSubject<Passing>(context, call);
  }

  static void Start(void* context, const xmlChar* local, const xmlChar* prefix, const xmlChar* uri,
                    int namespaceCount, const xmlChar** namespaces, int attributeCount, int /*defaulted*/,
                    const xmlChar** attributes) {
    To(context, [&](Passing& passing) {
      passing.KeepNamespaces(namespaces, namespaceCount);
      passing.KeepAttributes(attributes, attributeCount);
      passing.handler_.StartElement(
          {.name = {LibraryText(prefix), LibraryText(local), passing.Uri(uri)},
           .namespaces = passing.namespaces_,
           .attributes = std::span(passing.attributes_).first(static_cast<std::size_t>(attributeCount)),
           .line = StrictParser::LineIn(context)});
    });
  }

  static void Text(void* context, const xmlChar* text, int length) {
    To(context, [&](Passing& passing) {
      passing.handler_.Text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
    });
  }

  std::string_view Uri(const xmlChar* uri) {
    const std::string_view text = LibraryText(uri);
    if (text.find(ampersandReference) == std::string_view::npos) return text;
    std::string decoded;
    DecodeValue(decoded, uri, uri + text.size());
    return *decodedUris_.insert(std::move(decoded)).first;
  }

  // The library passes two pointers per namespace.
  void KeepNamespaces(const xmlChar** pointers, int count) {
    namespaces_.clear();
    for (int index = 0; index < count; ++index, pointers += 2)
      namespaces_.push_back({LibraryText(pointers[0]), Uri(pointers[1])});
  }

  // And five per attribute: name, prefix, namespace, begin and end of the value.
  void KeepAttributes(const xmlChar** pointers, int count) {
    if (attributes_.size() < static_cast<std::size_t>(count))
      attributes_.resize(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index, pointers += 5) {
      XmlAttribute& attribute = attributes_[static_cast<std::size_t>(index)];
      attribute.name = {LibraryText(pointers[1]), LibraryText(pointers[0]), Uri(pointers[2])};
      DecodeValue(attribute.value, pointers[3], pointers[4]);
    }
  }

  XmlStreamHandler& handler_;
  // Used again for every tag.
  std::vector<XmlNamespace> namespaces_;
  std::vector<XmlAttribute> attributes_;
  std::set<std::string, std::less<>> decodedUris_;
};

}  // namespace

std::string QualifiedName(const XmlName& name) {
  std::string qualified(name.prefix);
  if (!qualified.empty()) qualified += ':';
  return qualified += name.local;
}

std::optional<std::string_view> FindAttribute(const XmlStartTag& tag, std::string_view name) {
  const auto found = std::ranges::find_if(tag.attributes, [&](const XmlAttribute& attribute) {
    return attribute.name.local == name && attribute.name.uri.empty();
  });
  if (found == tag.attributes.end()) return std::nullopt;
  return found->value;
}

std::optional<XmlFault> ParseXmlStream(const ByteSource& source, XmlStreamHandler& handler) {
  StrictParser parser;
  Passing passing(handler);
  passing.Install(parser);
  xmlFreeDoc(parser.ParseStream(source));
  return parser.Fault();
}

}  // namespace krnqb
