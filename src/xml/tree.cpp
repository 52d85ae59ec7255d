#include "xml/tree.h"

#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include "krnqb/error.h"

namespace krnqb {
namespace {

struct FreeXPathObject {
  void operator()(xmlXPathObject* object) const noexcept { xmlXPathFreeObject(object); }
};

void IgnoreError(void* /*context*/, xmlErrorPtr /*error*/) {}

}  // namespace

XmlTree::XmlTree(xmlDoc* ownedDocument) : document(ownedDocument) {
  if (document->encoding != nullptr) xmlFree(const_cast<xmlChar*>(document->encoding));
  document->encoding = xmlCharStrdup("UTF-8");
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

std::vector<xmlNode*> XmlTree::Evaluate(const std::string& path, xmlNode* from) {
  if (evaluation_ == nullptr) {
    evaluation_ = xmlXPathNewContext(document);
    evaluation_->error = IgnoreError;
  }
  evaluation_->node = from;
  const std::unique_ptr<xmlXPathObject, FreeXPathObject> result(
      xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(path.c_str()), evaluation_));
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
