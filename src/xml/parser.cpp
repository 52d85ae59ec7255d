#include "xml/parser.h"

#include <libxml/tree.h>

#include "xml/strict_parser.h"
#include "xml/tree.h"

namespace krnqb {
namespace {

XmlParseResult ParseXml(std::string_view source, XmlEncoding encoding) {
  StrictParser parser;
  xmlDoc* const document = parser.Parse(source, encoding);
  if (document == nullptr) return {{}, parser.Fault()};
  auto tree = XmlTree::Owning(document);
  xmlNode* const root = xmlDocGetRootElement(document);
  return {XmlTree::Handle(std::move(tree), root), std::nullopt};
}

}  // namespace

XmlParseResult ParseXmlText(std::string_view text) {
  return ParseXml(text, XmlEncoding::Utf8);
}

XmlParseResult ParseXmlBytes(std::string_view bytes) {
  return ParseXml(bytes, XmlEncoding::Declared);
}

std::string EscapedXmlText(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char character : text) {
    switch (character) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += character;
    }
  }
  return escaped;
}

}  // namespace krnqb
