#include "support/xml_parser.h"

#include <libxml/parser.h>

#include <limits>
#include <memory>

#include "support/xml_tree.h"

namespace krnqb {
namespace {

// No recovery, no network, no external subset, no substitution of entities: those stay off by not being
// named.
constexpr int strictOptions =
    XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_BIG_LINES | XML_PARSE_HUGE;

struct FreeParser {
  void operator()(xmlParserCtxt* parser) const noexcept { xmlFreeParserCtxt(parser); }
};
struct FreeDocument {
  void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};

// Keeps the first fault of a document: those that follow come from it.
void KeepFault(xmlParserCtxt* parser, long line, std::string message) {
  auto& fault = *static_cast<std::optional<XmlFault>*>(parser->_private);
  if (!fault) fault = XmlFault{line, std::move(message)};
}

void KeepError(void* context, xmlErrorPtr error) {
  if (error == nullptr || error->message == nullptr || error->level < XML_ERR_ERROR) return;
  std::string message = error->message;
  while (message.ends_with('\n')) message.pop_back();
  KeepFault(static_cast<xmlParserCtxt*>(context), error->line, std::move(message));
}

// Entities are refused at their declaration, before one can be expanded into more than memory holds.
void RefuseEntity(void* context) {
  auto* const parser = static_cast<xmlParserCtxt*>(context);
  KeepFault(parser, parser->input == nullptr ? 0 : parser->input->line, "the document declares entities");
  parser->wellFormed = 0;
  xmlStopParser(parser);
}

void RefuseEntityDeclaration(void* context, const xmlChar* /*name*/, int /*type*/,
                             const xmlChar* /*publicId*/, const xmlChar* /*systemId*/, xmlChar* /*content*/) {
  RefuseEntity(context);
}

void RefuseUnparsedEntity(void* context, const xmlChar* /*name*/, const xmlChar* /*publicId*/,
                          const xmlChar* /*systemId*/, const xmlChar* /*notation*/) {
  RefuseEntity(context);
}

XmlParseResult ParseXml(std::string_view source, const char* encoding, int options) {
  if (source.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    return {{}, XmlFault{1, "the document is larger than 2 GB"}};
  }
  const std::unique_ptr<xmlParserCtxt, FreeParser> parser(xmlNewParserCtxt());
  if (parser == nullptr) throw std::bad_alloc();
  std::optional<XmlFault> fault;
  parser->_private = &fault;
  parser->sax->serror = KeepError;
  parser->sax->entityDecl = RefuseEntityDeclaration;
  parser->sax->unparsedEntityDecl = RefuseUnparsedEntity;
  std::unique_ptr<xmlDoc, FreeDocument> document(xmlCtxtReadMemory(
      parser.get(), source.data(), static_cast<int>(source.size()), nullptr, encoding, options));
  if (document == nullptr || fault || xmlDocGetRootElement(document.get()) == nullptr) {
    return {{}, fault.value_or(XmlFault{1, "the document is empty"})};
  }
  auto tree = std::make_shared<XmlTree>(document.release());
  xmlNode* const root = xmlDocGetRootElement(tree->document);
  return {XmlTree::Handle(std::move(tree), root), std::nullopt};
}

}  // namespace

XmlParseResult ParseXmlText(std::string_view text) {
  return ParseXml(text, "UTF-8", strictOptions | XML_PARSE_IGNORE_ENC);
}

XmlParseResult ParseXmlBytes(std::string_view bytes) {
  return ParseXml(bytes, nullptr, strictOptions);
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
