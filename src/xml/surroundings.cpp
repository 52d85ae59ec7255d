#include "xml/surroundings.h"

#include <libxml/tree.h>

#include <memory>
#include <new>

#include "xml/strict_parser.h"

namespace krnqb {
namespace {

struct FreeBuffer {
  void operator()(xmlBuffer* buffer) const noexcept { xmlBufferFree(buffer); }
};

struct FreeDocument {
  void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};

// So that it is written without character references.
void MarkAsUtf8(xmlDoc& document) {
  // The library declares the text that it allocated for us as constant.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
  if (document.encoding != nullptr) xmlFree(const_cast<xmlChar*>(document.encoding));
  document.encoding = xmlCharStrdup("UTF-8");
  if (document.encoding == nullptr) throw std::bad_alloc();
}

std::string Printed(xmlDoc* document, xmlNode* node) {
  const std::unique_ptr<xmlBuffer, FreeBuffer> buffer(xmlBufferCreate());
  if (buffer == nullptr || xmlNodeDump(buffer.get(), document, node, 0, 0) < 0) throw std::bad_alloc();
  std::string text(reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
                   static_cast<std::size_t>(xmlBufferLength(buffer.get())));
  if (!text.ends_with('\n')) text += '\n';
  return text;
}

}  // namespace

XmlSurroundings SurroundingsOf(std::string_view bytes) {
  StrictParser parser;
  const std::unique_ptr<xmlDoc, FreeDocument> document(parser.Parse(bytes, XmlEncoding::Declared));
  XmlSurroundings surroundings;
  if (document == nullptr) return surroundings;
  MarkAsUtf8(*document);
  const xmlNode* const root = xmlDocGetRootElement(document.get());
  std::string* part = &surroundings.before;
  for (xmlNode* node = document->children; node != nullptr; node = node->next) {
    if (node == root) {
      part = &surroundings.after;
    } else {
      *part += Printed(document.get(), node);
    }
  }
  return surroundings;
}

}  // namespace krnqb
