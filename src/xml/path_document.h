#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "xml/node.h"

struct _xmlDoc;           // NOLINT: the XML library's own names
struct _xmlNode;          // NOLINT
struct _xmlXPathContext;  // NOLINT

namespace krnqb {

/// A copy of a tree as the XML library's document, in which the library evaluates XPath expressions. The tree
/// must not change while the copy is in use.
class PathDocument {
 public:
  /// Copies an element that has no parent.
  explicit PathDocument(XmlTreeNode* top);
  ~PathDocument();
  PathDocument(const PathDocument&) = delete;
  PathDocument& operator=(const PathDocument&) = delete;

  XmlTreeNode* Top() const noexcept { return top_; }

  /// Does what `XmlTree::Evaluate` says, from the topmost element or from one below it.
  std::vector<XmlTreeNode*> Evaluate(const std::string& path, const XmlTreeNode* from,
                                     unsigned long* visitsLeft);

 private:
  struct FreeDocument {
    void operator()(_xmlDoc* document) const noexcept;
  };
  struct FreeContext {
    void operator()(_xmlXPathContext* context) const noexcept;
  };

  void Fill();
  _xmlNode* AddElement(XmlTreeNode* node, _xmlNode* parent);

  XmlTreeNode* top_;
  std::unique_ptr<_xmlDoc, FreeDocument> document_;
  std::unique_ptr<_xmlXPathContext, FreeContext> context_;
  std::unordered_map<const XmlTreeNode*, _xmlNode*> copies_;  // of elements
};

}  // namespace krnqb
