#pragma once

#include <memory>
#include <string>
#include <vector>

#include "krnqb/xml_element.h"

struct _xmlDoc;           // NOLINT: the XML library's own names
struct _xmlNode;          // NOLINT
struct _xmlXPathContext;  // NOLINT

namespace krnqb {

/// A parsed document and the elements that were taken out of it, which live as long as the document does
/// because handles may still stand for them.
struct XmlTree {
  /// Takes the document over and marks it as UTF-8, so that it is written without character references.
  explicit XmlTree(_xmlDoc* document);
  ~XmlTree();
  XmlTree(const XmlTree&) = delete;
  XmlTree& operator=(const XmlTree&) = delete;

  /// A handle to a node of this tree; none for null.
  static XmlElement Handle(std::shared_ptr<XmlTree> tree, _xmlNode* node) noexcept;
  /// The tree and the node behind a handle; null for none and for an outside element.
  static const std::shared_ptr<XmlTree>& TreeOf(const XmlElement& element) noexcept;
  static _xmlNode* NodeOf(const XmlElement& element) noexcept;

  /// The elements that an XPath expression selects from a node, in document order.
  std::vector<_xmlNode*> Evaluate(const std::string& path, _xmlNode* from);

  _xmlDoc* document;
  std::vector<_xmlNode*> removed;

 private:
  _xmlXPathContext* evaluation_ = nullptr;
};

}  // namespace krnqb
