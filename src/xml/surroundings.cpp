#include "xml/surroundings.h"

#include <libxml/tree.h>

#include <memory>
#include <new>

#include "xml/tree.h"

namespace krnqb {
namespace {

struct FreeBuffer {
  void operator()(xmlBuffer* buffer) const noexcept { xmlBufferFree(buffer); }
};

std::string Printed(xmlDoc* document, xmlNode* node) {
  const std::unique_ptr<xmlBuffer, FreeBuffer> buffer(xmlBufferCreate());
  if (buffer == nullptr || xmlNodeDump(buffer.get(), document, node, 0, 0) < 0) throw std::bad_alloc();
  std::string text(reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
                   static_cast<std::size_t>(xmlBufferLength(buffer.get())));
  if (!text.ends_with('\n')) text += '\n';
  return text;
}

}  // namespace

XmlSurroundings SurroundingsOf(const XmlElement& element) {
  XmlSurroundings surroundings;
  if (XmlTree::NodeOf(element) == nullptr) return surroundings;
  xmlDoc* const document = XmlTree::TreeOf(element)->document;
  const xmlNode* const root = xmlDocGetRootElement(document);
  std::string* part = &surroundings.before;
  for (xmlNode* node = document->children; node != nullptr; node = node->next) {
    if (node == root) {
      part = &surroundings.after;
    } else {
      *part += Printed(document, node);
    }
  }
  return surroundings;
}

}  // namespace krnqb
