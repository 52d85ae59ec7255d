#include "xml/path_document.h"

#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <algorithm>
#include <new>
#include <string_view>

#include "krnqb/error.h"
#include "xml/library_memory.h"

namespace krnqb {
namespace {

void IgnoreError(void* /*context*/, xmlErrorPtr /*error*/) {}

struct FreeXPathObject {
  void operator()(xmlXPathObject* object) const noexcept { xmlXPathFreeObject(object); }
};

// A text as the library takes it, ending in a zero.
class TerminatedText {
 public:
  explicit TerminatedText(std::string_view text) : text_(text) {}
  // NOLINTNEXTLINE(google-explicit-constructor)
  operator const xmlChar*() const noexcept { return reinterpret_cast<const xmlChar*>(text_.c_str()); }

 private:
  std::string text_;
};

template <typename Made>
Made* Required(Made* made) {
  if (made == nullptr) throw std::bad_alloc();
  return made;
}

// Returns the declaration of a name's namespace, which is added to the element if no ancestor has it.
xmlNs* NamespaceOf(xmlDoc* document, xmlNode* element, const XmlName& name) {
  if (name.uri.empty()) return nullptr;
  const TerminatedText prefix(name.prefix);
  const xmlChar* const declared = name.prefix.empty() ? nullptr : static_cast<const xmlChar*>(prefix);
  xmlNs* const found = xmlSearchNs(document, element, declared);
  return found != nullptr ? found : Required(xmlNewNs(element, TerminatedText(name.uri), declared));
}

xmlNode* NewInstruction(xmlDoc* document, std::string_view text) {
  const std::size_t end = std::min(text.find(' '), text.size());
  const TerminatedText target(text.substr(0, end));
  if (end == text.size()) return xmlNewDocPI(document, target, nullptr);
  return xmlNewDocPI(document, target, TerminatedText(text.substr(end + 1)));
}

xmlNode* NewContent(xmlDoc* document, const XmlTreeNode* node) {
  const std::string_view text = node->OwnText();
  const auto* const begin = reinterpret_cast<const xmlChar*>(text.data());
  const auto length = static_cast<int>(text.size());
  switch (node->Kind()) {
    case XmlNodeKind::CharacterData:
      return xmlNewCDataBlock(document, begin, length);
    case XmlNodeKind::Comment:
      return xmlNewDocComment(document, TerminatedText(text));
    case XmlNodeKind::Instruction:
      return NewInstruction(document, text);
    default:
      return xmlNewDocTextLen(document, begin, length);
  }
}

// Adds a node without joining it with a text before it.
void Link(xmlNode* parent, xmlNode* node) {
  node->parent = parent;
  node->prev = parent->last;
  (parent->last == nullptr ? parent->children : parent->last->next) = node;
  parent->last = node;
}

}  // namespace

void PathDocument::FreeDocument::operator()(xmlDoc* document) const noexcept {
  xmlFreeDoc(document);
}

void PathDocument::FreeContext::operator()(xmlXPathContext* context) const noexcept {
  xmlXPathFreeContext(context);
}

PathDocument::PathDocument(XmlTreeNode* top)
    : top_(top), document_(Required(xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0")))) {
  const LibraryMemory memory;
  document_->dict = Required(xmlDictCreate());  // one copy of every name
  Fill();
  context_.reset(Required(xmlXPathNewContext(document_.get())));
  context_->error = IgnoreError;
  memory.Check();
}

PathDocument::~PathDocument() = default;

// Walks without recursion: a tree may be deeper than any document that is parsed.
void PathDocument::Fill() {
  xmlNode* parent = nullptr;
  for (XmlTreeNode* node = top_; node != nullptr;) {
    if (node->IsElement()) {
      xmlNode* const copy = AddElement(node, parent);
      if (node->First() != nullptr) {
        parent = copy;
        node = node->First();
        continue;
      }
    } else if (!node->IsInTag()) {
      Link(parent, Required(NewContent(document_.get(), node)));
    }
    while (node != top_ && node->Next() == nullptr) {
      node = node->Parent();
      parent = parent->parent;
    }
    node = node == top_ ? nullptr : node->Next();
  }
}

// Adds an element with its attributes and the text that it holds itself.
xmlNode* PathDocument::AddElement(XmlTreeNode* node, xmlNode* parent) {
  xmlDoc* const document = document_.get();
  xmlNode* const copy =
      Required(xmlNewDocNode(document, nullptr, TerminatedText(node->Name()->local), nullptr));
  if (parent == nullptr) {
    xmlDocSetRootElement(document, copy);
  } else {
    Link(parent, copy);
  }
  copy->_private = node;
  copies_.emplace(node, copy);
  const XmlTreeNode* inTag = node->First();
  for (; inTag != nullptr && inTag->Kind() == XmlNodeKind::Namespace; inTag = inTag->Next()) {
    const TerminatedText prefix(inTag->Name()->local);
    const xmlChar* const declared =
        inTag->Name()->local.empty() ? nullptr : static_cast<const xmlChar*>(prefix);
    Required(xmlNewNs(copy, TerminatedText(inTag->OwnText()), declared));
  }
  copy->ns = NamespaceOf(document, copy, *node->Name());
  for (; inTag != nullptr && inTag->Kind() == XmlNodeKind::Attribute; inTag = inTag->Next()) {
    const XmlName& name = *inTag->Name();
    xmlNs* const space = NamespaceOf(document, copy, name);
    Required(xmlNewNsProp(copy, space, TerminatedText(name.local), TerminatedText(inTag->OwnText())));
  }
  if (node->HoldsText()) Link(copy, Required(NewContent(document, node)));
  return copy;
}

std::vector<XmlTreeNode*> PathDocument::Evaluate(const std::string& path, const XmlTreeNode* from,
                                                 unsigned long* visitsLeft) {
  const LibraryMemory memory;
  context_->node = copies_.at(from);
  context_->opCount = 0;
  context_->opLimit = visitsLeft == nullptr ? 0 : *visitsLeft;  // 0: no limit
  const std::unique_ptr<xmlXPathObject, FreeXPathObject> result(
      xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(path.c_str()), context_.get()));
  if (visitsLeft != nullptr) *visitsLeft -= std::min(*visitsLeft, context_->opCount);
  memory.Check();
  if (result == nullptr || result->type != XPATH_NODESET) throw Error(error_number::unspecified);
  std::vector<XmlTreeNode*> elements;
  if (result->nodesetval == nullptr) return elements;
  xmlXPathNodeSetSort(result->nodesetval);
  for (int index = 0; index < result->nodesetval->nodeNr; ++index) {
    const xmlNode* const node = result->nodesetval->nodeTab[index];
    if (node->type == XML_ELEMENT_NODE) elements.push_back(static_cast<XmlTreeNode*>(node->_private));
  }
  return elements;
}

}  // namespace krnqb
