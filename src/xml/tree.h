#pragma once

#include <memory>
#include <string>
#include <vector>

#include "krnqb/xml_element.h"

struct _xmlDoc;           // NOLINT: the XML library's own names
struct _xmlNode;          // NOLINT
struct _xmlXPathContext;  // NOLINT

namespace krnqb {

/// A parsed document and the elements detached from it, which live as long as the document because handles
/// may still refer to them.
struct XmlTree {
  /// Returns a tree that owns the document and marks it as UTF-8, so that it is written without character
  /// references. Frees the document if it throws.
  static std::shared_ptr<XmlTree> Owning(_xmlDoc* document);
  /// As `Owning`, but leaves the document to the caller if it throws.
  explicit XmlTree(_xmlDoc* document);
  ~XmlTree();
  XmlTree(const XmlTree&) = delete;
  XmlTree& operator=(const XmlTree&) = delete;

  /// Returns a handle to a node of the tree, or an empty handle for null.
  static XmlElement Handle(std::shared_ptr<XmlTree> tree, _xmlNode* node) noexcept;
  /// Return the tree and the node that a handle refers to, or null for an empty handle and an outside
  /// element.
  static const std::shared_ptr<XmlTree>& TreeOf(const XmlElement& element) noexcept;
  static _xmlNode* NodeOf(const XmlElement& element) noexcept;

  /// Returns the elements that an XPath expression selects from a node, in document order. A detached node is
  /// searched in its topmost ancestor. Throws Error -2147467259 if the expression is malformed.
  /// With `visitsLeft`, throws the same error if the evaluation visits more nodes, and subtracts those
  /// visited.
  std::vector<_xmlNode*> Evaluate(const std::string& path, _xmlNode* from,
                                  unsigned long* visitsLeft = nullptr);

  _xmlDoc* document;
  std::vector<_xmlNode*> removed;  ///< the detached elements; owned

 private:
  _xmlXPathContext* evaluation_ = nullptr;
};

}  // namespace krnqb
