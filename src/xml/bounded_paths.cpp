#include "xml/bounded_paths.h"

#include "krnqb/error.h"
#include "xml/tree.h"

namespace krnqb {

XmlElement BoundedPaths::Select(const XmlElement& element, const std::string& path) {
  XmlTreeNode* const node = XmlTree::NodeOf(element);
  if (node == nullptr) throw Error(error_number::objectNotSet);
  if (visitsLeft_ == 0) {
    throw Error(error_number::unspecified, "the ids in an answer contain expressions that take too long");
  }
  const std::shared_ptr<XmlTree>& tree = XmlTree::TreeOf(element);
  const std::vector<XmlTreeNode*> nodes = tree->Evaluate(path, node, &visitsLeft_);
  return nodes.empty() ? XmlElement() : XmlTree::Handle(tree, nodes.front());
}

}  // namespace krnqb
