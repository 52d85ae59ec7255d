#include "xml/parser.h"

#include <memory>

#include "xml/strict_parser.h"
#include "xml/tree.h"
#include "xml/tree_building.h"

namespace krnqb {
namespace {

XmlParseResult ParseXml(std::string_view source, XmlEncoding encoding) {
  StrictParser parser;
  auto tree = std::make_shared<XmlTree>();
  XmlTreeNode* const root = BuildTree(parser, source, encoding, *tree);
  if (root == nullptr) return {{}, parser.Fault()};
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
