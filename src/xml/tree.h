#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "krnqb/xml_element.h"
#include "xml/node.h"
#include "xml/text_arena.h"

namespace krnqb {

class PathDocument;

/// The nodes, names and texts of a document and of the elements detached from it, all of which live as long
/// as the tree because handles may still refer to them.
struct XmlTree {
  XmlTree();
  ~XmlTree();
  XmlTree(const XmlTree&) = delete;
  XmlTree& operator=(const XmlTree&) = delete;

  /// Returns a handle to an element of the tree, or an empty handle for null.
  static XmlElement Handle(std::shared_ptr<XmlTree> tree, XmlTreeNode* element) noexcept;
  /// Return the tree and the element that a handle refers to, or null for an empty handle and an outside
  /// element.
  static const std::shared_ptr<XmlTree>& TreeOf(const XmlElement& element) noexcept;
  static XmlTreeNode* NodeOf(const XmlElement& element) noexcept;

  /// Returns the tree's only copy of a name.
  const XmlName* NameOf(const XmlName& name);
  /// Returns a copy of a text that lives as long as the tree. Throws std::bad_alloc if it is too long.
  std::string_view Kept(std::string_view text);
  /// Return a new node without a parent; the texts of nodes are kept ones.
  XmlTreeNode* NewNode(XmlNodeKind kind, const XmlName* name, long line);
  XmlTreeNode* NewText(XmlNodeKind kind, std::string_view text);

  /// Returns a deep copy of an element of any tree. It declares the namespaces that it uses and inherits.
  XmlTreeNode* CopyOf(const XmlTreeNode* source);
  /// Makes the text that an element holds itself a child node, so that other nodes can be added.
  void MakeRoom(XmlTreeNode* element);
  /// Call before the content of the tree changes.
  void Changing() noexcept;

  /// Returns the elements that an XPath expression selects from an element, in document order. A detached
  /// element is searched in its topmost ancestor. Throws Error -2147467259 if the expression is malformed.
  /// With `visitsLeft`, throws the same error if the evaluation visits more nodes, and subtracts those
  /// visited.
  std::vector<XmlTreeNode*> Evaluate(const std::string& path, XmlTreeNode* from,
                                     unsigned long* visitsLeft = nullptr);

 private:
  std::vector<std::vector<XmlTreeNode>> nodes_;  // each with its capacity reserved: nodes never move
  std::deque<XmlName> names_;
  std::unordered_map<std::string, const XmlName*> namesByText_;
  TextArena texts_;
  std::unique_ptr<PathDocument> searched_;
};

}  // namespace krnqb
