#include "xml/printing.h"

#include <string_view>

namespace krnqb {
namespace {

// Returns what a character is replaced by in content, or an empty text if it stays.
std::string_view InContent(char character) noexcept {
  switch (character) {
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '&':
      return "&amp;";
    case '\r':
      return "&#13;";
    default:
      return {};
  }
}

// In an attribute's value, line ends and tabs would be read as blanks.
std::string_view InValue(char character) noexcept {
  switch (character) {
    case '"':
      return "&quot;";
    case '\n':
      return "&#10;";
    case '\t':
      return "&#9;";
    default:
      return InContent(character);
  }
}

template <typename Replacement>
void AppendEscaped(std::string& xml, std::string_view text, Replacement&& replacement) {
  std::size_t done = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::string_view reference = replacement(text[at]);
    if (reference.empty()) continue;
    xml.append(text, done, at - done).append(reference);
    done = at + 1;
  }
  xml.append(text, done);
}

void AppendName(std::string& xml, const XmlName& name) {
  if (!name.prefix.empty()) xml.append(name.prefix).append(1, ':');
  xml.append(name.local);
}

// The end of a section must not occur within it: it is divided between two.
void AppendCharacterData(std::string& xml, std::string_view text) {
  constexpr std::string_view end = "]]>";
  xml += "<![CDATA[";
  for (std::size_t at = text.find(end); at != std::string_view::npos; at = text.find(end)) {
    xml.append(text.substr(0, at + 2)).append("]]><![CDATA[");
    text.remove_prefix(at + 2);
  }
  xml.append(text).append(end);
}

void AppendContent(std::string& xml, const XmlTreeNode* node) {
  const std::string_view text = node->OwnText();
  switch (node->Kind()) {
    case XmlNodeKind::CharacterData:
      AppendCharacterData(xml, text);
      break;
    case XmlNodeKind::Comment:
      xml.append("<!--").append(text).append("-->");
      break;
    case XmlNodeKind::Instruction:
      xml.append("<?").append(text).append("?>");
      break;
    default:
      AppendEscaped(xml, text, InContent);
  }
}

// Appends the name, the declarations and the attributes of an element; returns its first other child.
const XmlTreeNode* AppendTag(std::string& xml, const XmlTreeNode* element) {
  xml += '<';
  AppendName(xml, *element->Name());
  const XmlTreeNode* node = element->First();
  for (; node != nullptr && node->IsInTag(); node = node->Next()) {
    if (node->Kind() == XmlNodeKind::DefaultAttribute) continue;
    const bool declaration = node->Kind() == XmlNodeKind::Namespace;
    xml += declaration ? " xmlns" : " ";
    if (declaration && !node->Name()->local.empty()) xml += ':';
    AppendName(xml, *node->Name());
    xml += "=\"";
    AppendEscaped(xml, node->OwnText(), InValue);
    xml += '"';
  }
  return node;
}

void AppendEnd(std::string& xml, const XmlTreeNode* element) {
  xml += "</";
  AppendName(xml, *element->Name());
  xml += '>';
}

}  // namespace

// Walks without recursion: a tree may be deeper than any document that is parsed.
std::string PrintedXml(const XmlTreeNode* element) {
  std::string xml;
  for (const XmlTreeNode* node = element; node != nullptr;) {
    if (!node->IsElement()) {
      AppendContent(xml, node);
    } else if (const XmlTreeNode* const content = AppendTag(xml, node); content != nullptr) {
      xml += '>';
      node = content;
      continue;
    } else if (node->HoldsText()) {
      xml += '>';
      AppendEscaped(xml, node->OwnText(), InContent);
      AppendEnd(xml, node);
    } else {
      xml += "/>";
    }
    while (node != element && node->Next() == nullptr) AppendEnd(xml, node = node->Parent());
    node = node == element ? nullptr : node->Next();
  }
  return xml;
}

}  // namespace krnqb
