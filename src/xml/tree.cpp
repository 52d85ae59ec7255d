#include "xml/tree.h"

#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <algorithm>
#include <new>
#include <optional>

#include "krnqb/error.h"
#include "xml/library_memory.h"

namespace krnqb {
namespace {

struct FreeDocument {
  void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};

struct FreeXPathObject {
  void operator()(xmlXPathObject* object) const noexcept { xmlXPathFreeObject(object); }
};

void IgnoreError(void* /*context*/, xmlErrorPtr /*error*/) {}

xmlNode* TopmostElement(xmlNode* element) {
  while (element->parent != nullptr && element->parent->type == XML_ELEMENT_NODE) element = element->parent;
  return element;
}

// Gives a detached element a document of its own while a path is evaluated, so that "//" does not search the
// document that the element was removed from.
class DocumentOfDetached {
 public:
  explicit DocumentOfDetached(xmlNode* topmostElement)
      : document_(xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"))), element_(topmostElement) {
    if (document_ == nullptr) throw std::bad_alloc();
    document_->children = document_->last = element_;
    element_->parent = reinterpret_cast<xmlNode*>(document_);
  }
  ~DocumentOfDetached() {
    element_->parent = nullptr;
    document_->children = document_->last = nullptr;
    xmlFreeDoc(document_);
  }
  DocumentOfDetached(const DocumentOfDetached&) = delete;
  DocumentOfDetached& operator=(const DocumentOfDetached&) = delete;

  xmlDoc* Document() const noexcept { return document_; }

 private:
  xmlDoc* document_;
  xmlNode* element_;
};

}  // namespace

std::shared_ptr<XmlTree> XmlTree::Owning(xmlDoc* document) {
  std::unique_ptr<xmlDoc, FreeDocument> owned(document);
  auto tree = std::make_shared<XmlTree>(document);
  static_cast<void>(owned.release());  // the tree owns it now
  return tree;
}

XmlTree::XmlTree(xmlDoc* ownedDocument) : document(ownedDocument) {
  // The library declares the text that it allocated for us as constant.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
  if (document->encoding != nullptr) xmlFree(const_cast<xmlChar*>(document->encoding));
  document->encoding = xmlCharStrdup("UTF-8");
  if (document->encoding == nullptr) throw std::bad_alloc();
}

XmlTree::~XmlTree() {
  if (evaluation_ != nullptr) xmlXPathFreeContext(evaluation_);
  for (xmlNode* node : removed) xmlFreeNode(node);
  xmlFreeDoc(document);
}

XmlElement XmlTree::Handle(std::shared_ptr<XmlTree> tree, xmlNode* node) noexcept {
  return {std::move(tree), reinterpret_cast<XmlTreeNode*>(node)};
}

const std::shared_ptr<XmlTree>& XmlTree::TreeOf(const XmlElement& element) noexcept {
  return element.tree_;
}

xmlNode* XmlTree::NodeOf(const XmlElement& element) noexcept {
  return reinterpret_cast<xmlNode*>(element.node_);
}

std::vector<xmlNode*> XmlTree::Evaluate(const std::string& path, xmlNode* from, unsigned long* visitsLeft) {
  const LibraryMemory memory;
  if (evaluation_ == nullptr) {
    evaluation_ = xmlXPathNewContext(document);
    if (evaluation_ == nullptr) throw std::bad_alloc();
    evaluation_->error = IgnoreError;
  }
  std::optional<DocumentOfDetached> detached;
  if (xmlNode* const top = TopmostElement(from); top->parent == nullptr) detached.emplace(top);
  evaluation_->doc = detached ? detached->Document() : document;
  evaluation_->node = from;
  evaluation_->opCount = 0;
  evaluation_->opLimit = visitsLeft == nullptr ? 0 : *visitsLeft;  // 0: no limit
  const std::unique_ptr<xmlXPathObject, FreeXPathObject> result(
      xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(path.c_str()), evaluation_));
  if (visitsLeft != nullptr) *visitsLeft -= std::min(*visitsLeft, evaluation_->opCount);
  memory.Check();
  if (result == nullptr || result->type != XPATH_NODESET) throw Error(error_number::unspecified);
  std::vector<xmlNode*> nodes;
  if (result->nodesetval == nullptr) return nodes;
  xmlXPathNodeSetSort(result->nodesetval);
  for (int index = 0; index < result->nodesetval->nodeNr; ++index) {
    xmlNode* node = result->nodesetval->nodeTab[index];
    if (node->type == XML_ELEMENT_NODE) nodes.push_back(node);
  }
  return nodes;
}

}  // namespace krnqb
